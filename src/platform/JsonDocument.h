#pragma once

#include <QByteArray>
#include <QJsonDocument>

namespace vantrel {

/// The document that `json` holds, a null one when it is not well-formed. Unlike Qt's own reader it
/// keeps a byte order mark that begins a text in it.
[[nodiscard]] QJsonDocument documentFromJson(const QByteArray &json);

} // namespace vantrel
