#pragma once

#include "support/ProcessRun.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace vantrel::test {

/// The sample provider as a process of its own, answering without pauses. Ends with this object.
class SampleProvider
{
public:
    explicit SampleProvider(const QStringList &options = {});
    SampleProvider(const SampleProvider &) = delete;
    SampleProvider &operator=(const SampleProvider &) = delete;
    ~SampleProvider();

    [[nodiscard]] QString baseURL() const { return m_baseURL; }

    /// What it was asked so far, in order: method, path, hasAuthorization, body.
    [[nodiscard]] QList<QJsonObject> requests() const;

    /// Ends the process at once, as a provider that dies.
    void kill();

private:
    QTemporaryDir m_folder{};
    std::optional<ChildProcess> m_process{};
    QString m_baseURL{};
};

/// Makes the sample repository in `folder` and gives its path.
[[nodiscard]] QString makeDemoRepository(const QString &folder);

} // namespace vantrel::test
