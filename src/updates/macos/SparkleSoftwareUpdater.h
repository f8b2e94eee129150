#pragma once

#include "updates/SoftwareUpdating.h"

#include <memory>

namespace vantrel {

/// Updates by the Sparkle framework, whose standard controller owns the whole cycle with windows of
/// its own and reads the bundle's information itself. Thread: interface.
class SparkleSoftwareUpdater final : public SoftwareUpdating
{
    Q_OBJECT

public:
    /// Starts the framework's updater.
    explicit SparkleSoftwareUpdater(QObject *parent = nullptr);
    ~SparkleSoftwareUpdater() override;

    [[nodiscard]] bool canCheckForUpdates() const override { return m_canCheckForUpdates; }
    void checkForUpdates() override;

private:
    struct Framework;

    void takeCanCheckForUpdates(bool canCheck);

    bool m_canCheckForUpdates = false; ///< The framework's own flag.
    std::unique_ptr<Framework> m_framework;
};

} // namespace vantrel
