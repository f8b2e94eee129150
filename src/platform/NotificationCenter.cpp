#include "platform/NotificationCenter.h"

#include "platform/jobs/Channel.h"
#include "platform/jobs/RunQueue.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace vantrel {

/// One observer. Its lock is held while it is called, which is how the end of its token waits for a
/// call on another thread; it is recursive, so that an observer may end its own token.
struct NotificationCenter::Registration
{
    QString name{};
    std::function<void()> call{};
    std::recursive_mutex mutex{};
    bool isEnded = false; ///< Guarded by `mutex`.

    void notify()
    {
        const std::lock_guard lock(mutex);
        if (!isEnded) {
            call();
        }
    }

    void end()
    {
        const std::lock_guard lock(mutex);
        isEnded = true;
    }
};

struct NotificationCenter::State
{
    std::mutex mutex{};
    std::vector<std::shared_ptr<Registration>> registrations{}; ///< Guarded by `mutex`.
};

NotificationCenter::Token::Token(std::shared_ptr<Registration> registration)
    : m_registration(std::move(registration))
{}

NotificationCenter::Token &NotificationCenter::Token::operator=(Token &&other) noexcept
{
    std::swap(m_registration, other.m_registration);
    return *this;
}

NotificationCenter::Token::~Token()
{
    if (m_registration) {
        m_registration->end();
    }
}

NotificationCenter::NotificationCenter()
    : m_state(std::make_shared<State>())
{}

NotificationCenter::~NotificationCenter() = default;

void NotificationCenter::post(const QString &name)
{
    std::vector<std::shared_ptr<Registration>> observers;
    {
        const std::lock_guard lock(m_state->mutex);
        for (const auto &registration : m_state->registrations) {
            if (registration->name == name) {
                observers.push_back(registration);
            }
        }
    }
    for (const auto &observer : observers) {
        observer->notify();
    }
}

NotificationCenter::Token NotificationCenter::observe(const QString &name,
                                                      std::function<void()> call)
{
    const auto registration = std::make_shared<Registration>();
    registration->name = name;
    registration->call = std::move(call);
    const std::lock_guard lock(m_state->mutex);
    // A registration that only this list still holds has lost its token.
    std::erase_if(m_state->registrations, [](const auto &entry) { return entry.use_count() == 1; });
    m_state->registrations.push_back(registration);
    return Token(registration);
}

NotificationCenter::Stream NotificationCenter::notifications(const QString &name)
{
    using Source = Channel<std::monostate, std::monostate>;
    const auto source = std::make_shared<Source>();
    const auto token = std::make_shared<Token>(observe(name, [weak = std::weak_ptr(source)] {
        // The channel belongs to the interface thread, whoever posts.
        RunQueue::interfaceThread().postFromThread([weak] {
            if (const auto channel = weak.lock()) {
                channel->push({});
            }
        });
    }));
    // Holds the channel until its reader goes, and then ends the registration.
    source->onTermination([source, token] { *token = Token(); });
    return source->stream();
}

} // namespace vantrel
