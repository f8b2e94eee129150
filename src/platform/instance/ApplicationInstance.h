#pragma once

#include "platform/instance/StartRequest.h"

#include <QObject>

#include <memory>

namespace vantrel {

/// The one running application of a desktop session. Two of them would each write the whole of what
/// they remember, and lose what the other one added. Thread: interface.
class ApplicationInstance : public QObject
{
    Q_OBJECT

public:
    enum class Start {
        first,      ///< This process is the application, or nothing tells whether there is another.
        handedOver, ///< The application that runs has taken the request.
        unanswered, ///< There is one, but it did not take the request in time.
    };

    /// Becomes the application of the session, or hands `request` to the one that is. Waits, for
    /// some seconds at most. Before anything is read or shown, once.
    [[nodiscard]] virtual Start start(const StartRequest &request) = 0;

Q_SIGNALS:
    /// Another start, or the desktop, asks for this. Only ever from the event loop.
    void requested(const vantrel::StartRequest &request);
};

/// As this operating system does it.
[[nodiscard]] std::unique_ptr<ApplicationInstance> systemInstance();

} // namespace vantrel
