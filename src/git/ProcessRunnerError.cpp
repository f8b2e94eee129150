#include "git/ProcessRunnerError.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString ProcessRunnerError::description() const
{
    switch (kind) {
    case Case::nonZeroExit:
        return u"Command exited with status "_s + QString::number(status) + u": "_s + message;
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
