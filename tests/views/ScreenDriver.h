#pragma once

#include "ScreenServices.h"

#include "app/RootViewModel.h"

#include <QObject>
#include <QStringList>
#include <QTcpServer>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace vantrel::test {

/// Lets tests written in QML play git and the model for the real view models.
class ScreenDriver : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::RootViewModel *root READ root NOTIFY started)

public:
    using QObject::QObject;
    ~ScreenDriver() override;

    [[nodiscard]] RootViewModel *root() const { return m_root.get(); }

    /// Everything anew. No screen may still be there.
    Q_INVOKABLE void start(bool hasAcknowledgedNotice);

    /// Makes an empty repository of this name and remembers it as the newest recent one.
    Q_INVOKABLE void addRecentRepository(const QString &name);

    /// Removes all repositories that were made.
    Q_INVOKABLE void removeRepositories();

    /// Opens the repository "repo" and leaves its listing open.
    Q_INVOKABLE void openRepository();

    /// Ends the listing: with `src/file0.cpp` and so on, of as many hunks as given for each.
    Q_INVOKABLE void answerFiles(const QList<int> &hunkCounts);
    /// Ends the listing: with `src/file0.cpp`, of which one line has become `line`.
    Q_INVOKABLE void answerFileOfLine(const QString &line);
    Q_INVOKABLE void failListing(const QString &message);

    /// Answers the question for the hunks of a file without any.
    Q_INVOKABLE void answerNoHunks();

    /// Of those that are still being read.
    Q_INVOKABLE int explanationCount() const;

    /// These three concern the oldest explanation that is still being read.
    Q_INVOKABLE void pushProse(const QString &text);
    Q_INVOKABLE void complete(const QString &tag, const QString &prose, const QStringList &points);
    Q_INVOKABLE void failForMissingKey();

    Q_INVOKABLE int summaryCount() const;
    Q_INVOKABLE void answerSummary(const QString &summary); ///< The one asked for last.
    Q_INVOKABLE void failSummaryForMissingKey();

    /// Lets the narrative of the next listing be asked for, instead of being known.
    Q_INVOKABLE void askForNarrative() { m_isNarrativeKnown = false; }
    Q_INVOKABLE int narrativeCount() const;
    Q_INVOKABLE void answerNarrative(const QString &narrative);

    Q_INVOKABLE int answerCount() const;
    Q_INVOKABLE void pushAnswer(const QString &text); ///< Of the question asked last, as the next.
    Q_INVOKABLE void finishAnswer();
    Q_INVOKABLE void failAnswer(const QString &message);
    Q_INVOKABLE void answerQuestions(const QStringList &questions);

    /// Of a picture that a server on this machine would be asked for, and whether it was.
    Q_INVOKABLE QString temptingAddress();
    Q_INVOKABLE bool isTempted() const { return m_server.hasPendingConnections(); }

    Q_INVOKABLE QString clipboard() const;

Q_SIGNALS:
    void started();

private:
    void answerListing(const QList<FileChange> &files);
    [[nodiscard]] ExplanationChannel &openExplanation();

    std::optional<QTemporaryDir> m_folder{};
    std::unique_ptr<ScreenServices> m_services{};
    std::unique_ptr<RootViewModel> m_root{};
    bool m_isNarrativeKnown = true;
    QTcpServer m_server{};
};

} // namespace vantrel::test
