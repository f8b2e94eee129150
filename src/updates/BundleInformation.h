#pragma once

#include <QJsonObject>

namespace vantrel {

/// What the application's build says of itself to the updater: the values of its bundle, empty when
/// there are none. On Linux they are the file `../share/vantrel/bundle-information.json` beside the
/// folder of the executable. Reads one small file; an application object must be there.
/// Thread: interface.
[[nodiscard]] QJsonObject mainBundleInformation();

} // namespace vantrel
