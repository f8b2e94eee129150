#pragma once

#include "ai/config/AIProvider.h"

#include <optional>

namespace vantrel {

class UserDefaults;

/// Whether a key has been saved, for each provider, so that a launch can decide about the setup
/// without touching the keychain. A hint: it is never compared with the keychain. Thread: any.
class APIKeyPresenceStore final
{
public:
    /// `defaults` must outlive the store.
    explicit APIKeyPresenceStore(UserDefaults &defaults);

    void markSaved(AIProvider provider);
    void markRemoved(AIProvider provider);

    /// True when the key was removed, false when one was saved, nothing when neither is known.
    [[nodiscard]] std::optional<bool> isKnownMissing(AIProvider provider) const;

private:
    void mark(AIProvider provider, bool isSaved);

    UserDefaults &m_defaults;
};

} // namespace vantrel
