#include "git/GitPrefix.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QStringList gitPrefix()
{
    return {u"-c"_s, u"core.fsmonitor="_s, u"-c"_s, u"core.pager=cat"_s, u"--no-optional-locks"_s};
}

} // namespace vantrel
