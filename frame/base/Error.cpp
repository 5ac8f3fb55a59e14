#include "KvxFrame/Error.h"

namespace kvx::frame {

Error::~Error() = default;  // here, so that all programs share one type

}  // namespace kvx::frame
