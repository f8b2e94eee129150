#include "ai/config/AppAppearance.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString rawValue(AppAppearance appearance)
{
    switch (appearance) {
    case AppAppearance::system:
        return u"system"_s;
    case AppAppearance::light:
        return u"light"_s;
    case AppAppearance::dark:
        return u"dark"_s;
    }
    Q_UNREACHABLE();
}

std::optional<AppAppearance> appAppearanceFromRawValue(QStringView raw)
{
    for (const AppAppearance appearance : allAppAppearances) {
        if (raw == rawValue(appearance)) {
            return appearance;
        }
    }
    return std::nullopt;
}

} // namespace vantrel
