#pragma once

#include <QString>

namespace vantrel {

/// A program that git runs to read a repository because the repository's own configuration names
/// it, not the person's.
struct RepositoryProgram
{
    QString submodule{}; ///< The path of the submodule whose configuration it is, if it is one's.
    QString key{};       ///< As git writes it: "filter.images.clean".
    QString command{};

    bool operator==(const RepositoryProgram &) const = default;
};

} // namespace vantrel
