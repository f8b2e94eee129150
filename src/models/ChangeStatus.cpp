#include "models/ChangeStatus.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString rawValue(ChangeStatus status)
{
    switch (status) {
    case ChangeStatus::modified:
        return u"M"_s;
    case ChangeStatus::added:
        return u"A"_s;
    case ChangeStatus::deleted:
        return u"D"_s;
    }
    Q_UNREACHABLE();
}

std::optional<ChangeStatus> changeStatusFromRawValue(QStringView raw)
{
    for (const auto status : {ChangeStatus::modified, ChangeStatus::added, ChangeStatus::deleted}) {
        if (raw == rawValue(status)) {
            return status;
        }
    }
    return std::nullopt;
}

} // namespace vantrel
