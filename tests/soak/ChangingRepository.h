#pragma once

#include "Chance.h"
#include "support/TemporaryRepository.h"

#include <QMap>
#include <QString>

namespace vantrel::test {

/// A repository that somebody else works in while it is shown. Notices whatever in it was changed
/// by others.
class ChangingRepository
{
public:
    ChangingRepository();

    [[nodiscard]] QString path() const { return m_repository.path(); }

    /// Changes something; what, in words for the log. Throws when a file or git fails.
    QString change(Chance &chance);

    /// What is not as this object has left it; empty when all is.
    [[nodiscard]] QString foreignChange() const;

private:
    using Fingerprint = QMap<QString, QString>;

    QString changeByChance(Chance &chance);
    void edit(const QString &file, Chance &chance) const;
    [[nodiscard]] QStringList files() const;
    [[nodiscard]] Fingerprint fingerprint() const;

    TemporaryRepository m_repository{};
    int m_changes = 0;
    bool m_isAway = false; ///< Its folder is not where it was.
    Fingerprint m_left{};
};

} // namespace vantrel::test
