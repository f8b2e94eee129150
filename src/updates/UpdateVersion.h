#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace vantrel {

/// The number of a version.
struct UpdateVersion
{
    QList<int> segments{}; ///< From the most significant on, without zeros at the end.

    [[nodiscard]] QString text() const;

    bool operator==(const UpdateVersion &) const = default;
    bool operator<(const UpdateVersion &other) const { return segments < other.segments; }
};

/// Reads counts with dots between them; nothing else is a version.
[[nodiscard]] std::optional<UpdateVersion> readVersion(const QString &text);

} // namespace vantrel
