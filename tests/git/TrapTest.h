#pragma once

#include "RepositoryTest.h"

#include <QStringList>

namespace vantrel::test {

/// A repository whose configuration can name programs that leave a mark when they run.
class TrapTest : public RepositoryTest
{
protected:
    /// A program of this name that leaves its mark, then does what these lines of shell say.
    /// `name` is its mark; the result is its path, which has no spaces.
    [[nodiscard]] QString trap(const QString &name, const QByteArray &lines = {}) const;

    /// A trap that hands on what it is given, as a filter does, or the file that it is named.
    [[nodiscard]] QString filterTrap(const QString &name) const { return trap(name, "exec cat\n"); }
    [[nodiscard]] QString readerTrap(const QString &name) const
    {
        return trap(name, "exec cat \"$1\"\n");
    }

    /// The names of the traps that have run.
    [[nodiscard]] QStringList marks() const;

    /// Sets a key of the repository's own configuration.
    void configure(const QString &key, const QString &value) const;

    /// Adds to the person's configuration.
    void configurePerson(const QByteArray &lines) const;

    /// Gives every path these attributes.
    void setAttributes(const QByteArray &attributes) const;

    /// Commits "f" and "g"; then changes one line of "f", and only the time of "g".
    void changeFile() const;

    /// Lists without the guard, as `git` alone would.
    [[nodiscard]] Listing changedFilesUnguarded();
};

} // namespace vantrel::test
