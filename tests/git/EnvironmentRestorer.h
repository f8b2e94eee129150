#pragma once

#include <QList>

#include <utility>

namespace vantrel::test {

/// Puts every environment variable back as it was, so that a test may change them. No other thread
/// may use the environment while one is made or destroyed.
class EnvironmentRestorer
{
public:
    EnvironmentRestorer();
    EnvironmentRestorer(const EnvironmentRestorer &) = delete;
    EnvironmentRestorer &operator=(const EnvironmentRestorer &) = delete;
    ~EnvironmentRestorer();

private:
    QList<std::pair<QByteArray, QByteArray>> m_variables{};
};

} // namespace vantrel::test
