#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

namespace vantrel::test {

/// A real repository on the branch "main", without a commit, in a temporary folder that goes with
/// the object. Nothing of the person's configuration or of this process's environment reaches its
/// git. A step that fails throws, which fails the test. File names are relative to its root.
class TemporaryRepository
{
public:
    TemporaryRepository();

    /// The root folder. Its name has a space, a percent sign and a letter that is not ASCII.
    [[nodiscard]] QUrl root() const;
    [[nodiscard]] QString path(const QString &file = {}) const;

    /// A path in the temporary folder, beside the repository.
    [[nodiscard]] QString pathOutside(const QString &name) const;

    /// Makes the folders of the file where they are missing.
    void write(const QString &file, const QByteArray &content) const;
    void remove(const QString &file) const;

    /// Puts a symbolic link with the text `target` in the place of the file.
    void link(const QString &file, const QByteArray &target) const;

    /// What git printed.
    QByteArray git(const QStringList &arguments) const;

    /// For a command that may fail, such as a merge: its exit status.
    int gitStatus(const QStringList &arguments) const;

    /// Adds every change and commits it.
    void commitAll() const;

private:
    QTemporaryDir m_folder;
};

} // namespace vantrel::test
