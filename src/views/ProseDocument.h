#pragma once

#include "views/InlineMarkdown.h"
#include "views/ProseWidth.h"

#include <QBasicTimer>
#include <QFont>
#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QQuickTextDocument>
#include <QString>
#include <QTextCharFormat>
#include <qqml.h>

namespace vantrel {

/// Fills the document of a text item with a text and the looks of its parts.
///
/// The characters go in as they are and the looks as formats beside them, so that no markup is ever
/// read. A text that has grown changes the document only from where it differs: what stands before
/// is not laid out again, and a selection in it stays. A very long text comes in over several
/// frames. Thread: interface.
class ProseDocument : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY changed)
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(qreal naturalWidth READ naturalWidth NOTIFY changed)
    Q_PROPERTY(bool isMarkdown READ isMarkdown WRITE setIsMarkdown NOTIFY changed)
    Q_PROPERTY(qreal line READ line WRITE setLine NOTIFY changed)
    Q_PROPERTY(QFont strongFont READ strongFont WRITE setStrongFont NOTIFY changed)
    Q_PROPERTY(QFont codeFont READ codeFont WRITE setCodeFont NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    [[nodiscard]] QString source() const { return m_source; }
    void setSource(const QString &source);
    /// What is read of it. The text item's own text is not told to bindings from the start.
    [[nodiscard]] QString text() const { return m_written.text; }
    /// In pixels, when no line is wrapped.
    [[nodiscard]] qreal naturalWidth() const { return m_width.width(); }
    /// Whether the source is inline Markdown; else it is shown as it is.
    [[nodiscard]] bool isMarkdown() const { return m_isMarkdown; }
    void setIsMarkdown(bool isMarkdown);
    [[nodiscard]] qreal line() const { return m_line; } ///< The height of a line in pixels.
    void setLine(qreal line);
    [[nodiscard]] QFont strongFont() const { return m_strongFont; } ///< Its weight is used.
    void setStrongFont(const QFont &font);
    [[nodiscard]] QFont codeFont() const { return m_codeFont; }
    void setCodeFont(const QFont &font);

    void classBegin() override {}
    void componentComplete() override; ///< Nothing is written before.

Q_SIGNALS:
    void changed();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void writeAnew();
    void write();

    /// Writes as much as a frame has time for.
    void writePiece();
    void measure(const Prose &prose, qsizetype common);
    [[nodiscard]] QTextCharFormat formatOf(const ProseSpan &span) const;

    QPointer<QQuickTextDocument> m_document{};
    QString m_source{};
    bool m_isMarkdown = true;
    qreal m_line = 20;
    QFont m_strongFont{};
    QFont m_codeFont{};
    bool m_isComplete = false;
    Prose m_prose{};   ///< What the document is to hold.
    Prose m_written{}; ///< What it holds.
    QBasicTimer m_nextPiece{};
    ProseWidth m_width{};
};

} // namespace vantrel
