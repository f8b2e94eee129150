#include "EnvironmentRestorer.h"

#include <QByteArray>
#include <QtGlobal>

#include <unistd.h>

namespace vantrel::test {

namespace {

QList<std::pair<QByteArray, QByteArray>> allVariables()
{
    QList<std::pair<QByteArray, QByteArray>> variables;
    for (char **entry = environ; *entry != nullptr; ++entry) {
        const QByteArray text(*entry);
        const qsizetype equals = text.indexOf('=');
        variables.append({text.first(equals), text.sliced(equals + 1)});
    }
    return variables;
}

} // namespace

EnvironmentRestorer::EnvironmentRestorer()
    : m_variables(allVariables())
{}

EnvironmentRestorer::~EnvironmentRestorer()
{
    for (const auto &[name, value] : allVariables()) {
        qunsetenv(name.constData());
    }
    for (const auto &[name, value] : std::as_const(m_variables)) {
        qputenv(name.constData(), value);
    }
}

} // namespace vantrel::test
