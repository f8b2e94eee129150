#pragma once

#include "app/AppCoordinator.h"
#include "app/ChatThreadViewModel.h"
#include "app/DiffViewModel.h"
#include "app/FileListViewModel.h"
#include "app/PickerViewModel.h"
#include "app/RootViewModel.h"
#include "app/SettingsViewModel.h"
#include "onboarding/AISetupSheet.h"
#include "onboarding/AISetupViewModel.h"
#include "persistence/KeychainAccessNotice.h"
#include "updates/FeedSoftwareUpdater.h"
#include "updates/SoftwareUpdating.h"
#include "views/SystemAppearance.h"

#include <qqml.h>

namespace vantrel {

// The classes below QML that views are handed; each is made in C++ only.

struct AppCoordinatorForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::AppCoordinator)
    QML_NAMED_ELEMENT(AppCoordinator)
    QML_UNCREATABLE("Made by the application.")
};

struct RootViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::RootViewModel)
    QML_NAMED_ELEMENT(RootViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct PickerViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::PickerViewModel)
    QML_NAMED_ELEMENT(PickerViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct FileListViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::FileListViewModel)
    QML_NAMED_ELEMENT(FileListViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct DiffViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::DiffViewModel)
    QML_NAMED_ELEMENT(DiffViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct ChatThreadViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::ChatThreadViewModel)
    QML_NAMED_ELEMENT(ChatThreadViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct SettingsViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::SettingsViewModel)
    QML_NAMED_ELEMENT(SettingsViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct KeychainAccessNoticeForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::KeychainAccessNotice)
    QML_NAMED_ELEMENT(KeychainAccessNotice)
    QML_UNCREATABLE("Made by the application.")
};

struct SystemAppearanceForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::SystemAppearance)
    QML_NAMED_ELEMENT(SystemAppearance)
    QML_UNCREATABLE("Made by the application.")
};

struct AISetupSheetForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::AISetupSheet)
    QML_NAMED_ELEMENT(AISetupSheet)
    QML_UNCREATABLE("Made by the application.")
};

struct AISetupViewModelForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::AISetupViewModel)
    QML_NAMED_ELEMENT(AISetupViewModel)
    QML_UNCREATABLE("Made by the application.")
};

struct SoftwareUpdatingForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::SoftwareUpdating)
    QML_NAMED_ELEMENT(SoftwareUpdating)
    QML_UNCREATABLE("Made by the application.")
};

struct FeedSoftwareUpdaterForQml
{
    Q_GADGET
    QML_FOREIGN(vantrel::FeedSoftwareUpdater)
    QML_NAMED_ELEMENT(FeedSoftwareUpdater)
    QML_UNCREATABLE("Made by the application.")
};

} // namespace vantrel
