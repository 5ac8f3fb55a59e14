#include "KvxDemosaicing/KvxVersion.h"

uint32_t Kvx_Version() noexcept {
    return KVX_VERSION_NUMBER;
}
