#include "WatchdogLog.h"

#include <QStringList>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

WatchdogLog::WatchdogLog(const QString &file)
    : m_file(file)
{}

void WatchdogLog::read()
{
    if (!m_file.isOpen() && !m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return;
    }
    m_partOfLine += m_file.readAll();
    for (qsizetype end = m_partOfLine.indexOf('\n'); end >= 0; end = m_partOfLine.indexOf('\n')) {
        take(QString::fromUtf8(m_partOfLine.first(end)));
        m_partOfLine.remove(0, end + 1);
    }
}

void WatchdogLog::take(const QString &line)
{
    const QStringList words = line.split(u' ');
    if (!m_crash.isEmpty()) {
        m_crash += line + u'\n';
    } else if (words.first() == "crash"_L1) {
        m_crash = line + u'\n';
    } else if (words.first() == "heap"_L1) {
        m_heap = words.value(1).toLongLong();
        ++m_heapCount;
    } else if (words.first() == "begun"_L1) {
        m_stack.clear();
    } else if (words.first() == "stretch"_L1) {
        m_stretches.append({words.value(1).toDouble() / 1000, words.value(2).toDouble() / 1000,
                            words.value(3).toDouble() / 1000, m_stack});
        m_stack.clear();
    } else {
        m_stack += line + u'\n';
    }
}

} // namespace vantrel::test
