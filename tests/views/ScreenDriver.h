#pragma once

#include "ScreenServices.h"

#include "app/RootViewModel.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace vantrel::test {

/// Lets tests written in QML play git and the model for the real view models.
class ScreenDriver : public QObject
{
    Q_OBJECT
    Q_PROPERTY(vantrel::RootViewModel *root READ root NOTIFY started)

public:
    using QObject::QObject;
    ~ScreenDriver() override;

    [[nodiscard]] RootViewModel *root() const { return m_root.get(); }

    /// Everything anew. No screen may still be there.
    Q_INVOKABLE void start(bool hasAcknowledgedNotice);

    /// Makes an empty repository of this name and remembers it as the newest recent one.
    Q_INVOKABLE void addRecentRepository(const QString &name);

    /// Removes all repositories that were made.
    Q_INVOKABLE void removeRepositories();

    /// Opens the repository "repo" and leaves its listing open.
    Q_INVOKABLE void openRepository();

    /// Ends the listing: with `src/file0.cpp` and so on, of as many hunks as given for each.
    Q_INVOKABLE void answerFiles(const QList<int> &hunkCounts);
    Q_INVOKABLE void failListing(const QString &message);

    /// Answers the question for the hunks of a file without any.
    Q_INVOKABLE void answerNoHunks();

    Q_INVOKABLE int explanationCount() const;
    Q_INVOKABLE void pushProse(const QString &text);
    Q_INVOKABLE void complete(const QString &tag, const QString &prose, const QStringList &points);
    Q_INVOKABLE void failForMissingKey();

Q_SIGNALS:
    void started();

private:
    [[nodiscard]] ExplanationChannel &lastExplanation();

    std::optional<QTemporaryDir> m_folder{};
    std::unique_ptr<ScreenServices> m_services{};
    std::unique_ptr<RootViewModel> m_root{};
};

} // namespace vantrel::test
