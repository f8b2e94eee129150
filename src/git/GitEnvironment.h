#pragma once

namespace vantrel {

/// Pins, by environment variables that child processes inherit, what a person's configuration or
/// shell would change of git's answers: colours hide every hunk, a suppressed blank line shifts
/// line numbers, and a file named `*.txt` would show the hunks of others. It also keeps git from
/// the network. Called once, before any thread starts.
void pinGitEnvironment();

} // namespace vantrel
