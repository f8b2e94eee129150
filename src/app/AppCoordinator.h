#pragma once

#include "app/Changeset.h"
#include "models/FileChange.h"
#include "models/Repo.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <variant>

namespace vantrel {

class AIResultCache;

/// The navigation state that all screens read and change. Thread: interface.
class AppCoordinator : public QObject
{
    Q_OBJECT
    Q_PROPERTY(RouteKind routeKind READ routeKind NOTIFY routeChanged)
    Q_PROPERTY(QString repositoryName READ repositoryName NOTIFY routeChanged)
    Q_PROPERTY(QString branchName READ branchName NOTIFY currentBranchChanged)

public:
    /// Which hunk is selected when a file opens.
    enum class InitialHunkSelection { first, last };

    struct PickerRoute
    {
        bool operator==(const PickerRoute &) const = default;
    };
    struct FilesRoute
    {
        Repo repo{};

        bool operator==(const FilesRoute &) const = default;
    };
    struct DiffRoute
    {
        Repo repo{};
        FileChange file{};
        QList<FileChange> allFiles{}; ///< The whole listing, for stepping to neighbouring files.
        Changeset changeset{};        ///< Of `allFiles`.
        InitialHunkSelection initialHunkSelection = InitialHunkSelection::first;

        bool operator==(const DiffRoute &) const = default;
    };
    using Route = std::variant<PickerRoute, FilesRoute, DiffRoute>;

    /// The route's case in the same order, for the views.
    enum class RouteKind { picker, files, diff };
    Q_ENUM(RouteKind)

    explicit AppCoordinator(QObject *parent = nullptr);
    ~AppCoordinator() override;

    [[nodiscard]] const Route &route() const { return m_route; }
    void setRoute(Route route);

    [[nodiscard]] const std::optional<QString> &currentBranch() const { return m_currentBranch; }
    void setCurrentBranch(std::optional<QString> branch);

    /// What the model has said of the repository that is open; never null. Shared with the jobs
    /// that fill it.
    [[nodiscard]] const std::shared_ptr<AIResultCache> &aiResultCache() const
    {
        return m_aiResultCache;
    }
    void setAiResultCache(std::shared_ptr<AIResultCache> cache);

    /// Shows the repository's changed files, forgets the branch of the one before, and starts with
    /// an empty cache, also when it is the same repository.
    void openRepository(const Repo &repo);

    [[nodiscard]] RouteKind routeKind() const;
    [[nodiscard]] QString repositoryName() const; ///< Empty on the picker.
    [[nodiscard]] QString branchName() const;     ///< Empty when unknown.

Q_SIGNALS:
    void routeChanged();
    void currentBranchChanged();
    void aiResultCacheChanged();

private:
    Route m_route{};
    std::optional<QString> m_currentBranch{};
    std::shared_ptr<AIResultCache> m_aiResultCache;
};

} // namespace vantrel
