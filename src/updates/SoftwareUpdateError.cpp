#include "updates/SoftwareUpdateError.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString SoftwareUpdateError::description() const
{
    switch (kind) {
    case Case::unreachable:
        return u"Couldn't reach the update server ("_s + detail +
               u"). Check your connection and try again."_s;
    case Case::refused:
        return u"The update server had nothing to give (status "_s + QString::number(status) +
               u"). Try again later."_s;
    case Case::insecureRedirect:
        return u"The update server led to an address that isn't https, so Vantrel didn't follow."_s;
    case Case::tooManyRedirects:
        return u"The update server led from one address to the next without an end."_s;
    case Case::feedTooLarge:
        return u"The list of updates is larger than any real one, so Vantrel stopped reading it."_s;
    case Case::feedNotSigned:
        return u"The list of updates isn't signed by the makers of Vantrel, so it was ignored."_s;
    case Case::feedMalformed:
        return u"The list of updates couldn't be read. Try again later."_s;
    case Case::feedDowngraded:
        return u"The newest version offered is "_s + detail +
               u", which is older than yours, so nothing was downloaded."_s;
    case Case::feedWithoutPackage:
        return u"The list of updates has no package for this system."_s;
    case Case::packageOfOtherLength:
        return u"The download doesn't have the announced length, so it was deleted. Try again."_s;
    case Case::packageNotSigned:
        return u"The download isn't signed by the makers of Vantrel, so it was deleted."_s;
    case Case::packageNotKept:
        return u"Couldn't save the download ("_s + detail + u")."_s;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
