// Whatever a repository's configuration says: each program of its own that git would run is either
// told, with its whole command, or has something harmless in its place, and nothing else is told.

#include "FuzzCheck.h"

#include "git/RepositoryPrograms.h"
#include "models/Utf8.h"

#include <QHash>

namespace {

using vantrel::RepositoryPrograms;
using vantrel::fuzz::check;

const QByteArray folder = "/r";

struct Setting
{
    QByteArray scope{};
    QByteArray value{};

    [[nodiscard]] bool isPersons() const
    {
        return scope == "system" || scope == "global" || scope == "command";
    }
};

/// The last setting of each key.
QHash<QByteArray, Setting> settingsOf(const QByteArray &configuration)
{
    QHash<QByteArray, Setting> settings;
    QByteArrayList fields = configuration.split('\0');
    while (fields.size() > 1) {
        const QByteArray scope = fields.takeFirst();
        QByteArrayList lines = fields.takeFirst().split('\n');
        const QByteArray key = lines.takeFirst();
        settings.insert(key, {scope, lines.join('\n')});
    }
    return settings;
}

/// The names at the two ends of a key of three parts or more: "filter.clean" of
/// "filter.images.clean".
QByteArray ends(const QByteArray &key)
{
    const QByteArrayList parts = key.split('.');
    return parts.size() < 3 ? key : parts.first() + '.' + parts.last();
}

bool isToldFilter(const QByteArray &key)
{
    const bool isExtension =
        key.toLower().startsWith("lfs.extension.") && ends(key.toLower()) == "lfs.clean";
    const bool isFilter = ends(key) == "filter.clean" || ends(key) == "filter.process";
    return isExtension || (isFilter && key != "filter.clean" && key != "filter.process");
}

/// The commands that are told, by key.
QHash<QString, QString> toldCommands(const RepositoryPrograms &programs)
{
    QHash<QString, QString> commands;
    for (const vantrel::RepositoryProgram &program : programs.needed) {
        commands.insert(program.key, program.command);
    }
    return commands;
}

/// The command to be told for a setting; nothing when git would run none of the repository's.
QString commandToTell(const QByteArray &key, const Setting &setting)
{
    return isToldFilter(key) && !setting.isPersons() ? vantrel::textFromUtf8(setting.value)
                                                     : QString();
}

/// Whether a program for diffs, if the key names one, has git's own in its place.
bool isReplacedWhereItHasToBe(const RepositoryPrograms &programs, const QByteArray &key,
                              const Setting &setting)
{
    const auto &[values, ownDiffs, workTree] = programs.overrides;
    if (key == "diff.external") {
        return ownDiffs.contains(key);
    }
    if (key == "core.worktree") {
        return setting.isPersons() || workTree == folder;
    }
    if (key.count('.') < 2) {
        return true;
    }
    if (ends(key) == "diff.command") {
        return ownDiffs.contains(key);
    }
    if (ends(key) == "diff.textconv" && !setting.isPersons()) {
        const QByteArray driver = key.chopped(QByteArrayView("textconv").size());
        return values.value(key) == "cat" && ownDiffs.contains(driver + "command");
    }
    return ends(key) != "diff.cachetextconv" || values.value(key) == "false";
}

} // namespace

/// What `git config --list --null --show-scope` prints.
void vantrel::fuzz::tryInput(QByteArrayView input)
{
    const QByteArray configuration = input.toByteArray();
    const QHash<QByteArray, Setting> settings = settingsOf(configuration);

    const RepositoryPrograms programs = configuredPrograms(configuration, folder);

    if (!input.isValidUtf8()) {
        return; // Two keys could be told as the same text.
    }
    const QHash<QString, QString> told = toldCommands(programs);
    check(programs.needed.size() <= settings.size(), "no more programs are told than are set");
    check(programs.overrides.values.size() <= settings.size(), "only what is set is replaced");
    for (const auto &[key, setting] : settings.asKeyValueRange()) {
        check(told.value(textFromUtf8(key)) == commandToTell(key, setting),
              "what is run is told, and nothing else");
        check(isReplacedWhereItHasToBe(programs, key, setting), "what is not told is replaced");
    }
}
