#include "models/CodingError.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString CodingError::description() const
{
    switch (kind) {
    case Case::notAnObject:
        return u"The value is no object."_s;
    case Case::missingKey:
        return u"The key \"%1\" is missing."_s.arg(key);
    case Case::wrongType:
        return u"The value of \"%1\" has the wrong type."_s.arg(key);
    case Case::invalidValue:
        return u"The value of \"%1\" is not valid."_s.arg(key);
    case Case::invalidKeyCount:
        return u"Invalid number of keys found, expected one."_s;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
