#pragma once

#include <QTimer>

#include <functional>

namespace vantrel {

/// Passes on that something has changed at once, and after that at most once a frame: what streams
/// in comes faster than it can be laid out and drawn. Thread: interface.
class FramePacer final
{
public:
    /// `announce` is called by this object alone, so it may use what owns it.
    explicit FramePacer(std::function<void()> announce);

    /// Something has changed: announced now, or with the next frame.
    void changed();

    /// Forgets what was still to be announced.
    void drop() { m_isDue = false; }

private:
    void endFrame();

    std::function<void()> m_announce;
    QTimer m_frame{}; ///< Runs for a frame after each announcement.
    bool m_isDue = false;
};

} // namespace vantrel
