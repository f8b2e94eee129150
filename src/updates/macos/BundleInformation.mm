#include "updates/BundleInformation.h"

#include "updates/UpdaterConfiguration.h"

#import <Foundation/Foundation.h>

namespace vantrel {

QJsonObject mainBundleInformation()
{
    NSDictionary<NSString *, id> *const values = NSBundle.mainBundle.infoDictionary;
    QJsonObject information;
    for (const QLatin1StringView key :
         {UpdaterConfiguration::feedURLKey, UpdaterConfiguration::publicKeyKey}) {
        id const value = values[QString(key).toNSString()];
        if ([value isKindOfClass:NSString.class]) {
            information.insert(key, QString::fromNSString(value));
        }
    }
    return information;
}

} // namespace vantrel
