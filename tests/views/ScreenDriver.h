#pragma once

#include "ScreenServices.h"

#include "app/RootViewModel.h"
#include "support/FakeUpdateServer.h"
#include "updates/FeedSoftwareUpdater.h"

#include <QObject>
#include <QQuickItem>
#include <QStringList>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <optional>

namespace vantrel::test {

/// Lets tests written in QML play git and the model for the real view models.
class ScreenDriver : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::RootViewModel *root READ root NOTIFY started)
    /// Whether what is started next is configured for updates.
    Q_PROPERTY(bool isUpdatable MEMBER m_isUpdatable NOTIFY isUpdatableChanged)

public:
    using QObject::QObject;
    ~ScreenDriver() override;

    [[nodiscard]] RootViewModel *root() const { return m_root.get(); }

    /// Everything anew. No screen may still be there.
    Q_INVOKABLE void start(bool hasAcknowledgedNotice);

    /// Makes an empty repository of this name and remembers it as the newest recent one.
    Q_INVOKABLE void addRecentRepository(const QString &name);

    /// Remembers a repository that is not there as the newest recent one.
    Q_INVOKABLE void addMissingRepository(const QString &name);

    /// Removes all repositories that were made.
    Q_INVOKABLE void removeRepositories();

    /// Drags files over the middle of the item's window, as from another program, and drops them.
    Q_INVOKABLE bool dragOver(QQuickItem *item, const QList<QUrl> &urls);
    Q_INVOKABLE void dragAway(QQuickItem *item);
    Q_INVOKABLE bool dropOn(QQuickItem *item, const QList<QUrl> &urls);

    /// The address of a new folder without a repository, and of a new repository.
    Q_INVOKABLE QUrl makeFolder(const QString &name);
    Q_INVOKABLE QUrl makeRepository(const QString &name);

    /// Lets the configuration of every repository name this program as a filter, until it is
    /// allowed, and tells how often programs were allowed.
    Q_INVOKABLE void nameProgram(const QString &command);
    Q_INVOKABLE int allowedCount() const;

    /// Opens the repository "repo" and leaves its listing open.
    Q_INVOKABLE void openRepository();

    /// Ends the listing: with `src/file0.cpp` and so on, of as many hunks as given for each.
    Q_INVOKABLE void answerFiles(const QList<int> &hunkCounts);
    /// Ends the listing: with `src/file0.cpp`, of which one line has become `line`.
    Q_INVOKABLE void answerFileOfLine(const QString &line);
    Q_INVOKABLE void failListing(const QString &message);

    /// Answers the question for the hunks of a file without any.
    Q_INVOKABLE void answerNoHunks();

    /// Of those that are still being read.
    Q_INVOKABLE int explanationCount() const;

    /// These three concern the oldest explanation that is still being read.
    Q_INVOKABLE void pushProse(const QString &text);
    Q_INVOKABLE void complete(const QString &tag, const QString &prose, const QStringList &points);
    Q_INVOKABLE void failForMissingKey();

    Q_INVOKABLE int summaryCount() const;
    Q_INVOKABLE void answerSummary(const QString &summary); ///< The one asked for last.
    Q_INVOKABLE void failSummaryForMissingKey();

    /// Lets the narrative of the next listing be asked for, instead of being known.
    Q_INVOKABLE void askForNarrative() { m_isNarrativeKnown = false; }
    Q_INVOKABLE int narrativeCount() const;
    Q_INVOKABLE void answerNarrative(const QString &narrative);

    Q_INVOKABLE int answerCount() const;
    Q_INVOKABLE void pushAnswer(const QString &text); ///< Of the question asked last, as the next.
    Q_INVOKABLE void finishAnswer();
    Q_INVOKABLE void failAnswer(const QString &message);
    Q_INVOKABLE void answerQuestions(const QStringList &questions);

    /// As if it had been saved from the settings; the provider goes by its stored name.
    Q_INVOKABLE void storeConfiguration(const QString &provider, const QString &baseURL,
                                        const QString &model);

    /// The keychain: what it holds, whether its next call hangs, and whether it refuses the next
    /// change. Providers go by their stored names.
    Q_INVOKABLE void storeKey(const QString &provider, const QString &key);
    Q_INVOKABLE QString storedKey(const QString &provider) const;
    Q_INVOKABLE void hangKeychain();
    Q_INVOKABLE void letKeychainGo();
    Q_INVOKABLE void refuseKeyChange();

    /// As if a key had been saved from the settings before.
    Q_INVOKABLE void recordShownKeychainNotice();

    /// The browser: how many sign-ins are under way, how the one that is ends, and which pages were
    /// opened for the person.
    Q_INVOKABLE int signInCount() const;
    Q_INVOKABLE void finishSignIn(const QString &key);
    Q_INVOKABLE void failSignIn(); ///< Since the browser cannot be opened.
    Q_INVOKABLE QStringList openedPages() const;

    /// Ends the search for model servers: with the models of those that run, by stored names.
    Q_INVOKABLE void answerLocalServers(const QVariantMap &models);

    /// The server of updates: what it offers, the status that it answers everything with, and how
    /// much of the package comes.
    Q_INVOKABLE void offerUpdate(const QString &version, const QString &notes);
    Q_INVOKABLE void refuseUpdates(int status);
    Q_INVOKABLE void setPackagePart(double part);

    /// What was handed to the system's programs, and lets them refuse everything.
    Q_INVOKABLE QStringList openedFiles() const { return m_openedFiles; }
    Q_INVOKABLE void refuseFiles() { m_opensFiles = false; }

    /// Every text that a screen reader is given of the item's window.
    Q_INVOKABLE QStringList spokenTexts(QQuickItem *item) const;

    /// Of a picture that a server on this machine would be asked for, and whether it was.
    Q_INVOKABLE QString temptingAddress();
    Q_INVOKABLE bool isTempted() const { return m_server.hasPendingConnections(); }

    Q_INVOKABLE QString clipboard() const;

Q_SIGNALS:
    void started();
    void isUpdatableChanged();

private:
    void answerListing(const QList<FileChange> &files);
    [[nodiscard]] ExplanationChannel &openExplanation();

    std::optional<QTemporaryDir> m_folder{};
    std::unique_ptr<ScreenServices> m_services{};
    bool m_isUpdatable = false;
    std::unique_ptr<FakeUpdateServer> m_updateServer{};
    std::unique_ptr<FeedSoftwareUpdater> m_updater{};
    QStringList m_openedFiles{};
    bool m_opensFiles = true;
    std::unique_ptr<RootViewModel> m_root{};
    bool m_isNarrativeKnown = true;
    QTcpServer m_server{};
};

} // namespace vantrel::test
