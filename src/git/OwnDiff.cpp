// No setting brings git's own diff back where a program is configured for it: an empty command
// fails, and `git diff` is told to ignore the program only by an argument. So the program's place
// is taken by the same `git diff` with that argument.
//
// Git calls the command once for each changed file of the path that it was asked for: with the
// path, the old file, its hash and mode, and those of the new one, where /dev/null stands for a
// file that is not there; with the path alone where a conflict leaves nothing to compare. One path
// can have several files: a folder in the place of a file is the deleted file and the new ones in
// the folder. Each call therefore prints its own kind of change only. A file that has become a link
// comes as one call for `diff.external`, and as a deletion and an addition for a driver; then the
// first prints both.
//
// What git appends to the command is behind a "#".

#include "git/OwnDiff.h"

#include "git/GitPrefix.h"

namespace vantrel {

namespace {

QByteArray quoted(const QString &word)
{
    return '\'' + word.toUtf8().replace('\'', "'\\''") + '\'';
}

} // namespace

QByteArray ownDiffCommand(const QStringList &arguments, Conversions conversions)
{
    const qsizetype behindDiff = gitPrefix().size() + 1;
    QByteArray command = "if [ \"$2\" = /dev/null ]; then f=A; "
                         "elif [ \"$5\" = /dev/null ]; then f=DT; else f=MT; fi; exec git";
    for (const QString &word : arguments.first(behindDiff)) {
        command += ' ' + quoted(word);
    }
    command += " --no-ext-diff --diff-filter=$f";
    if (conversions == Conversions::ignore) {
        command += " --no-textconv";
    }
    for (qsizetype i = behindDiff; i < arguments.indexOf(QStringLiteral("--")); ++i) {
        command += ' ' + quoted(arguments.at(i));
    }
    return command + " -- \"$1\" #";
}

} // namespace vantrel
