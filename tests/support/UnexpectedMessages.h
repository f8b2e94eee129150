#pragma once

#include <QString>

namespace vantrel::test {

/// Makes every Qt warning or error that a test did not expect a failure of that test.
void installMessageHandler();

/// Lets the running test log messages that contain `part`, and expects at least one of them.
void expectMessage(const QString &part);

/// The same of exactly one message.
void expectOneMessage(const QString &part);

/// Fails when an expected message did not come, and forgets the expectations. After each test.
void checkExpectedMessages();

} // namespace vantrel::test
