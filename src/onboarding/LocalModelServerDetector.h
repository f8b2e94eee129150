#pragma once

#include "onboarding/LocalModelServerDetecting.h"

#include <QMap>
#include <QString>

namespace vantrel {

class Clock;
class HttpLoading;

/// Asks every server for its model listing, all at once. A server has two seconds for its whole
/// answer, and its listing is small: a detection takes no longer and holds no more, whatever
/// listens on the ports. Thread: interface.
class LocalModelServerDetector final : public LocalModelServerDetecting
{
public:
    using BaseURLs = QMap<LocalModelServer, QString>;

    /// The addresses at which the servers listen by themselves.
    [[nodiscard]] static BaseURLs usualBaseURLs();

    /// `session` and `clock` must outlive the detector.
    LocalModelServerDetector(HttpLoading &session, Clock &clock,
                             BaseURLs baseURLs = usualBaseURLs());

    Task<LocalModelServerStatuses> detectAll() override;

private:
    HttpLoading &m_session;
    Clock &m_clock;
    BaseURLs m_baseURLs;
};

} // namespace vantrel
