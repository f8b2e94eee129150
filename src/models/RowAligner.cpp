#include "models/RowAligner.h"

namespace vantrel {

} // namespace vantrel
