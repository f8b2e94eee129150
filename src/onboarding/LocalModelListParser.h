#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace vantrel::LocalModelListParser {

/// The identifiers of the chat models in the body of a model listing: trimmed, each once, in the
/// server's order. Embedding models are dropped, since they cannot chat. Nothing when the body is
/// not a model list.
[[nodiscard]] std::optional<QStringList> parse(const QByteArray &body);

} // namespace vantrel::LocalModelListParser
