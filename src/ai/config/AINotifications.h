#pragma once

#include <QString>

namespace vantrel {

/// Posted after a provider, base URL, model or key may have changed.
inline const QString aiConfigurationDidChange =
    QStringLiteral("com.orbisk.aiConfigurationDidChange");

/// Posted when a request found the configuration incomplete; answered by the setup sheet.
inline const QString aiSetupRequired = QStringLiteral("com.orbisk.aiSetupRequired");

} // namespace vantrel
