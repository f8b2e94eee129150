#pragma once

#include "platform/NotificationCenter.h"

#include <QObject>

namespace vantrel {

class APIKeyPresenceStore;
struct AISetupSession;
class SettingsStoring;

/// Whether the setup sheet is shown. It opens when it is asked for, when a request finds that it
/// cannot be made, and once in a run by itself when the stored configuration cannot work. The
/// keychain is not asked. Thread: interface; a request may report from any.
class AISetupPresenter final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isPresented READ isPresented WRITE setIsPresented NOTIFY isPresentedChanged)

public:
    /// All of it must outlive the presenter.
    struct Services
    {
        SettingsStoring &settingsStore;
        APIKeyPresenceStore &keyPresenceStore;
        AISetupSession &session;
        NotificationCenter &notificationCenter;
    };

    explicit AISetupPresenter(const Services &services, QObject *parent = nullptr);

    [[nodiscard]] bool isPresented() const { return m_isPresented; }
    void setIsPresented(bool isPresented);

    /// For the first time that the main window is shown.
    Q_INVOKABLE void presentAutomaticallyIfNeeded();

Q_SIGNALS:
    void isPresentedChanged();

private:
    [[nodiscard]] bool isSetupNeeded() const;

    Services m_services;
    bool m_isPresented = false;
    NotificationCenter::Token m_setupRequired;
};

} // namespace vantrel
