#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

namespace vantrel::test {

/// A real git repository in a folder that goes with this object. Every step that fails fails the
/// test.
class TemporaryRepository
{
public:
    TemporaryRepository();

    [[nodiscard]] QUrl root() const;
    [[nodiscard]] QString path(const QString &name = {}) const;

    /// Runs git in the repository and gives its output.
    QByteArray git(const QStringList &arguments) const;

    void write(const QString &name, const QByteArray &content) const;
    void commitAll() const;

private:
    QTemporaryDir m_folder{};
};

} // namespace vantrel::test
