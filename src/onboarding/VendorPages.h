#pragma once

#include "ai/config/AIProvider.h"
#include "onboarding/LocalModelServer.h"

#include <QUrl>

/// The vendors' own pages, for people who set up their models. All of them, since vendors move
/// their pages.
namespace vantrel::VendorPages {

/// Where a provider's keys are made; empty for a provider without a vendor.
[[nodiscard]] QUrl keys(AIProvider provider);

/// Where credits for OpenRouter are bought.
[[nodiscard]] QUrl openRouterCredits();

/// Where people get a model server.
[[nodiscard]] QUrl download(LocalModelServer server);

} // namespace vantrel::VendorPages
