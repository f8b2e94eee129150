#include "onboarding/LocalModelServerStatus.h"

#include <utility>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

LocalModelServerStatus LocalModelServerStatus::running(QStringList models)
{
    LocalModelServerStatus status;
    status.m_models = std::move(models);
    return status;
}

QString statusText(const std::optional<LocalModelServerStatus> &status)
{
    if (!status) {
        return u"Not checked"_s;
    }
    if (!status->isRunning()) {
        return u"Not running"_s;
    }
    const qsizetype count = status->models().size();
    if (count == 0) {
        return u"Running · no models installed"_s;
    }
    return count == 1 ? u"Running · 1 model"_s
                      : u"Running · "_s + QString::number(count) + u" models"_s;
}

} // namespace vantrel
