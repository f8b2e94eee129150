#include "updates/BundleInformation.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QJsonObject mainBundleInformation()
{
    constexpr qint64 maxBytes = 1 << 16;
    QFile file(QCoreApplication::applicationDirPath() +
               u"/../share/vantrel/bundle-information.json"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QJsonDocument::fromJson(file.read(maxBytes)).object();
}

} // namespace vantrel
