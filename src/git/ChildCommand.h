#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>

namespace vantrel {

/// A variable of a child's environment.
struct EnvironmentVariable
{
    QByteArray name{};
    QByteArray value{};

    bool operator==(const EnvironmentVariable &) const = default;
};

/// What a child process is started with, in the bytes that the system takes.
struct ChildCommand
{
    QByteArrayList words{}; ///< The tool, looked up on the search path, and its arguments.
    QByteArray folder{};    ///< In which it runs.
    QList<EnvironmentVariable> variables{}; ///< Beside the inherited ones, or in their place.
};

} // namespace vantrel
