#include "models/DiffParser.h"

namespace vantrel {

} // namespace vantrel
