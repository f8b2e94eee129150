#pragma once

#include <QString>
#include <QUrl>
#include <QUuid>

namespace vantrel {

/// The repository that is open.
struct Repo
{
    QUuid id{};     ///< Identity of this opening.
    QUrl url{};     ///< The root folder, which holds `.git`; every git command runs there.
    QString name{}; ///< Shown in the title bar.

    bool operator==(const Repo &) const = default;
};

} // namespace vantrel
