#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace vantrel {

/// What a detection has found out about one model server.
class LocalModelServerStatus
{
public:
    /// A server answered; `models` are the identifiers of its chat models, possibly none.
    [[nodiscard]] static LocalModelServerStatus running(QStringList models);

    /// Nothing usable answered.
    [[nodiscard]] static LocalModelServerStatus notRunning() { return {}; }

    [[nodiscard]] bool isRunning() const { return m_models.has_value(); }

    /// In the server's order; empty when it is not running.
    [[nodiscard]] QStringList models() const { return m_models.value_or(QStringList()); }

    bool operator==(const LocalModelServerStatus &) const = default;

private:
    std::optional<QStringList> m_models{}; ///< Nothing when it is not running.
};

/// What is shown beside a server; `status` is nothing before its first detection.
[[nodiscard]] QString statusText(const std::optional<LocalModelServerStatus> &status);

} // namespace vantrel
