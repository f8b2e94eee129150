#include "persistence/KeychainError.h"

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

QString KeychainError::description() const
{
    switch (kind) {
    case Case::unhandledStatus:
        return u"Keychain error (status "_s + QString::number(status) + u')';
    }
    Q_UNREACHABLE();
}

} // namespace vantrel
