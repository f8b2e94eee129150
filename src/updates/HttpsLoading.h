#pragma once

#include "platform/Result.h"
#include "platform/http/HttpLoading.h"
#include "platform/jobs/Task.h"
#include "updates/SoftwareUpdateError.h"

#include <QUrl>

namespace vantrel {

/// Loads what lies at `url`, by way of redirects if need be, as long as each leads to https. The
/// body comes as the server has it, not compressed. Fails unless an answer of status 200 comes.
/// `session` must outlive the task. Thread: interface.
[[nodiscard]] Task<Result<HttpBody, SoftwareUpdateError>> loadOverHttps(HttpLoading *session,
                                                                        QUrl url);

/// The failure of a connection.
[[nodiscard]] SoftwareUpdateError unreachable(const PlatformError &error);

} // namespace vantrel
