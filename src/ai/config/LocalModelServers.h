#pragma once

#include <QString>

namespace vantrel {

/// Where the model servers of this machine listen unless they are told otherwise.
inline const QString lmStudioBaseURL = QStringLiteral("http://localhost:1234/v1");
inline const QString ollamaBaseURL = QStringLiteral("http://localhost:11434/v1");

} // namespace vantrel
