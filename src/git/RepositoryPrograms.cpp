#include "git/RepositoryPrograms.h"

#include "models/Utf8.h"

namespace vantrel {

namespace {

struct Setting
{
    QByteArray value{};
    bool isRepositorys = false; ///< Not from the person's files or from this process.
};

/// The settings in force by key: the last of each.
QMap<QByteArray, Setting> settingsInForce(const QByteArray &configuration)
{
    QMap<QByteArray, Setting> settings;
    const QByteArrayList fields = configuration.split('\0');
    for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
        const QByteArray &scope = fields.at(i);
        const QByteArray &entry = fields.at(i + 1);
        const qsizetype keyEnd = entry.indexOf('\n');
        const QByteArray key = keyEnd < 0 ? entry : entry.first(keyEnd);
        const QByteArray value = keyEnd < 0 ? QByteArray() : entry.sliced(keyEnd + 1);
        const bool isPersons = scope == "system" || scope == "global" || scope == "command";
        settings.insert(key, Setting{value, !isPersons});
    }
    return settings;
}

/// Whether `key` is `section`, a name and `variable`: "filter.images.clean".
bool isNamed(const QByteArray &key, const char *section, const char *variable)
{
    return key.startsWith(section + QByteArray(".")) && key.endsWith(QByteArray(".") + variable) &&
           key.count('.') >= 2;
}

/// A filter changes what git compares, so that the changes would be others without it. The programs
/// of `lfs.extension` are run by a filter that is the person's.
bool isFilter(const QByteArray &key)
{
    return isNamed(key, "filter", "clean") || isNamed(key, "filter", "process") ||
           isNamed(key.toLower(), "lfs.extension", "clean");
}

/// The key of the command of the driver whose key is `key`.
QByteArray commandOfDriver(const QByteArray &key)
{
    return key.first(key.lastIndexOf('.')) + ".command";
}

} // namespace

RepositoryPrograms configuredPrograms(const QByteArray &configuration, const QByteArray &folder)
{
    RepositoryPrograms programs;
    GitOverrides &overrides = programs.overrides;
    const QMap<QByteArray, Setting> settings = settingsInForce(configuration);
    for (const auto &[key, setting] : settings.asKeyValueRange()) {
        if (isFilter(key)) {
            if (setting.isRepositorys && !setting.value.isEmpty()) {
                programs.needed.append({{}, textFromUtf8(key), textFromUtf8(setting.value)});
            }
        } else if (isNamed(key, "filter", "smudge")) {
            // For files that a diff program is handed, which nobody reads here.
            overrides.values.insert(key, "cat");
        } else if (key == "diff.external" || isNamed(key, "diff", "command")) {
            overrides.ownDiffs.insert(key, Conversions::run);
        } else if (isNamed(key, "diff", "textconv") && setting.isRepositorys) {
            // In the order of keys, so after the command of the same driver.
            overrides.ownDiffs.insert(commandOfDriver(key), Conversions::ignore);
            overrides.values.insert(key, "cat"); // A diff of several sides calls no command.
        } else if (isNamed(key, "diff", "cachetextconv")) {
            overrides.values.insert(key, "false"); // The cache lies in the repository.
        } else if (key == "core.worktree" && setting.isRepositorys) {
            overrides.workTree = folder; // Files elsewhere are none of the repository's.
        }
    }
    return programs;
}

} // namespace vantrel
