#pragma once

namespace vantrel {

class AIWorker;
class AppCoordinator;
class ChatHistoryStoring;
class GitWorker;
class KeychainAccessNotice;
class NotificationCenter;

/// What the screens of an open repository share. All of it must outlive them.
struct ReviewServices
{
    GitWorker &gitWorker;
    AIWorker &aiWorker;
    KeychainAccessNotice &keychainAccessNotice; ///< Awaited before each request to the model.
    ChatHistoryStoring &chatHistoryStore;
    AppCoordinator &coordinator;
    NotificationCenter &notificationCenter;
};

} // namespace vantrel
