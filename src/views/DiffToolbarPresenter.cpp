#include "views/DiffToolbarPresenter.h"

namespace vantrel {

namespace {

QString fileName(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

void DiffToolbarPresenter::setDiff(DiffViewModel *diff)
{
    if (diff == m_diff) {
        return;
    }
    if (m_diff) {
        m_diff->disconnect(this);
    }
    m_diff = diff;
    if (diff != nullptr) {
        connect(diff, &DiffViewModel::hunksChanged, this, &DiffToolbarPresenter::changed);
        connect(diff, &DiffViewModel::isLoadingChanged, this, &DiffToolbarPresenter::changed);
        connect(diff, &DiffViewModel::errorMessageChanged, this, &DiffToolbarPresenter::changed);
        connect(diff, &DiffViewModel::selectedHunkIndexChanged, this,
                &DiffToolbarPresenter::changed);
    }
    Q_EMIT changed();
}

QString DiffToolbarPresenter::folder() const
{
    const QString path = m_diff ? m_diff->file().path : QString();
    return path.first(path.lastIndexOf(u'/') + 1);
}

QString DiffToolbarPresenter::name() const
{
    return m_diff ? fileName(m_diff->file().path) : QString();
}

QString DiffToolbarPresenter::status() const
{
    return m_diff ? rawValue(m_diff->file().status) : QString();
}

int DiffToolbarPresenter::additions() const
{
    return m_diff ? int(m_diff->file().additions) : 0;
}

int DiffToolbarPresenter::deletions() const
{
    return m_diff ? int(m_diff->file().deletions) : 0;
}

QString DiffToolbarPresenter::position() const
{
    if (!m_diff || (m_diff->isLoading() && m_diff->hunkCount() == 0)) {
        return {};
    }
    if (m_diff->hunkCount() == 0) {
        return tr("No changes");
    }
    return tr("Change %1 of %2").arg(m_diff->selectedHunkIndex() + 1).arg(m_diff->hunkCount());
}

QString DiffToolbarPresenter::previousName() const
{
    if (m_diff && m_diff->selectedHunkIndex() == 0 && m_diff->previousFile() != nullptr) {
        return tr("Previous file: %1").arg(fileName(m_diff->previousFile()->path));
    }
    return tr("Previous change");
}

QString DiffToolbarPresenter::nextName() const
{
    const bool isAtEnd = m_diff && m_diff->selectedHunkIndex() + 1 >= m_diff->hunkCount();
    if (isAtEnd && m_diff->nextFile() != nullptr) {
        return tr("Next file: %1").arg(fileName(m_diff->nextFile()->path));
    }
    return tr("Next change");
}

bool DiffToolbarPresenter::hasNothingToShow() const
{
    return m_diff && !m_diff->isLoading() && m_diff->hunkCount() == 0 &&
           m_diff->errorMessage().isEmpty();
}

} // namespace vantrel
