#pragma once

#include "models/PersistedChatThread.h"

#include <QList>

namespace vantrel::test {

// A history of three threads in which each save replaces the oldest one, so that whoever reads it
// can tell how many saves there were and what every byte of it must be.

/// What the save of this number saves: some 200 kB.
[[nodiscard]] PersistedChatThread numberedThread(int number);

/// The history after the save of this number, which is at least 3.
[[nodiscard]] QList<PersistedChatThread> numberedHistory(int number);

/// The number of the newest save, 0 when there is none.
[[nodiscard]] int newestNumber(const QList<PersistedChatThread> &history);

} // namespace vantrel::test
