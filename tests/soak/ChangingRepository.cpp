#include "ChangingRepository.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray linesOfCode(int count, int mark)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i) {
        lines += "    value[" + QByteArray::number(i) + "] = compute(" + QByteArray::number(mark) +
                 ", \"text \\t" + QByteArray::number(i * mark) + "\");\n";
    }
    return lines;
}

} // namespace

ChangingRepository::ChangingRepository()
{
    // Otherwise git may tidy up later, by itself.
    m_repository.git({u"config"_s, u"gc.auto"_s, u"0"_s});
    m_repository.git({u"config"_s, u"maintenance.auto"_s, u"false"_s});
    for (int i = 0; i < 12; ++i) {
        m_repository.write(u"src/part %1/file_%1.cpp"_s.arg(i), linesOfCode(40 + 30 * i, i));
    }
    m_repository.commitAll();
    for (int i = 0; i < 6; ++i) {
        m_repository.write(u"src/part %1/file_%1.cpp"_s.arg(i),
                           linesOfCode(20, i) + linesOfCode(20 + 30 * i, i));
    }
    m_left = fingerprint();
}

QString ChangingRepository::change(Chance &chance)
{
    ++m_changes;
    const QString words = changeByChance(chance);
    m_left = fingerprint();
    return words;
}

QString ChangingRepository::changeByChance(Chance &chance)
{
    if (m_isAway || chance.oneIn(25)) {
        const QString aside = m_repository.pathOutside(u"aside"_s);
        const bool isMoved = m_isAway ? QDir().rename(aside, path()) : QDir().rename(path(), aside);
        m_isAway = m_isAway == !isMoved;
        return m_isAway ? u"the folder goes away"_s : u"the folder is back"_s;
    }
    const QStringList all = files();
    if (all.size() > 150 || m_changes % 15 == 0) {
        m_repository.git({u"reset"_s, u"--quiet"_s, u"--hard"_s});
        m_repository.git({u"clean"_s, u"--quiet"_s, u"--force"_s, u"-d"_s});
        edit(u"src/part 1/file_1.cpp"_s, chance);
        return u"reset and clean"_s;
    }
    const QString file = all.isEmpty() ? u"first.txt"_s : chance.of(all);
    const QString fresh = u"new/fîle %1.cpp"_s.arg(m_changes);
    switch (chance.below(12)) {
    case 0:
    case 1:
    case 2:
        edit(file, chance);
        return u"edit "_s + file;
    case 3:
        m_repository.write(fresh, linesOfCode(1 + chance.below(200), m_changes));
        return u"add "_s + fresh;
    case 4:
        if (!all.isEmpty()) {
            m_repository.remove(file);
        }
        return u"delete "_s + file;
    case 5:
        return u"rename "_s + file +
               u", git says %1"_s.arg(
                   m_repository.gitStatus({u"mv"_s, file, u"moved %1.cpp"_s.arg(m_changes)}));
    case 6:
        m_repository.git({u"add"_s, u"--all"_s});
        return u"add to the index"_s;
    case 7:
        m_repository.git({u"add"_s, u"--all"_s});
        return u"commit, git says %1"_s.arg(
            m_repository.gitStatus({u"commit"_s, u"--quiet"_s, u"--message=A step"_s}));
    case 8: {
        const int status = m_repository.gitStatus(
            {u"checkout"_s, u"--quiet"_s, u"-B"_s, u"branch-%1"_s.arg(m_changes % 5), u"HEAD~1"_s});
        return u"branch off the commit before, git says %1"_s.arg(status);
    }
    case 9:
        m_repository.write(u"huge.txt"_s, linesOfCode(20'000 + chance.below(80'000), m_changes));
        return u"a huge file"_s;
    case 10:
        m_repository.write(u"binary.bin"_s, QByteArray("\0\1\2\xff", 4).repeated(1 + m_changes));
        return u"a binary file"_s;
    default:
        for (int i = 0; i < 30; ++i) {
            m_repository.write(u"many/%1 of %2.txt"_s.arg(i).arg(m_changes), linesOfCode(3, i));
        }
        return u"thirty small files"_s;
    }
}

QString ChangingRepository::foreignChange() const
{
    const Fingerprint now = fingerprint();
    for (auto it = m_left.cbegin(); it != m_left.cend(); ++it) {
        if (now.value(it.key()) != it.value()) {
            return it.key() + u" was "_s + it.value() + u", is "_s + now.value(it.key(), u"gone"_s);
        }
    }
    for (auto it = now.cbegin(); it != now.cend(); ++it) {
        if (!m_left.contains(it.key())) {
            return it.key() + u" is new"_s;
        }
    }
    return {};
}

void ChangingRepository::edit(const QString &file, Chance &chance) const
{
    QFile source(m_repository.path(file));
    if (!source.open(QIODevice::ReadOnly)) {
        return;
    }
    QByteArrayList lines = source.readAll().split('\n');
    source.close();
    for (int i = 0; i < 3; ++i) {
        const int place = chance.below(lines.size());
        if (chance.oneIn(3) && lines.size() > 1) {
            lines.removeAt(place);
        } else {
            lines.insert(place, linesOfCode(1, chance.below(1000)).trimmed());
        }
    }
    m_repository.write(file, lines.join('\n'));
}

QStringList ChangingRepository::files() const
{
    QStringList names;
    QDirIterator it(path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        names.append(QDir(path()).relativeFilePath(it.next()));
    }
    names.sort();
    return names;
}

ChangingRepository::Fingerprint ChangingRepository::fingerprint() const
{
    Fingerprint all;
    const QDir root(m_isAway ? m_repository.pathOutside(u"aside"_s) : path());
    QDirIterator it(root.path(),
                    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo entry(it.next());
        all.insert(root.relativeFilePath(entry.filePath()),
                   u"%1 bytes of %2, mode %3"_s.arg(entry.size())
                       .arg(entry.lastModified().toString(Qt::ISODateWithMs))
                       .arg(int(entry.permissions()), 0, 16));
    }
    return all;
}

} // namespace vantrel::test
