#include "persistence/APIKeyPresenceStore.h"

#include "platform/UserDefaults.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

QString preferenceKey(AIProvider provider)
{
    return u"aiSetup.apiKeySaved."_s + rawValue(provider);
}

} // namespace

APIKeyPresenceStore::APIKeyPresenceStore(UserDefaults &defaults)
    : m_defaults(defaults)
{}

void APIKeyPresenceStore::markSaved(AIProvider provider)
{
    mark(provider, true);
}

void APIKeyPresenceStore::markRemoved(AIProvider provider)
{
    mark(provider, false);
}

std::optional<bool> APIKeyPresenceStore::isKnownMissing(AIProvider provider) const
{
    const auto isSaved = m_defaults.boolean(preferenceKey(provider));
    return isSaved ? std::optional(!*isSaved) : std::nullopt;
}

void APIKeyPresenceStore::mark(AIProvider provider, bool isSaved)
{
    // Without the hint the next launch offers the setup once more than needed, and no harm is done.
    m_defaults.setBoolean(preferenceKey(provider), isSaved);
}

} // namespace vantrel
