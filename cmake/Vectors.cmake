# For every target with vector code (Highway).
set(KVX_VECTOR_DEFINITIONS
    # The fallback for old processors is the one of 128-bit vectors, not of single lanes, whose kernels tell lanes apart
    # by parity. It is switched off for GCC before 12.3 because of bug 106322, met on 32-bit and big-endian machines; the
    # tests run it.
    HWY_BROKEN_EMU128=0
    # Off unless asked for: AVX-512 with lookups in 128 bytes.
    HWY_WANT_AVX3_DL
    # Vectors without a fixed size cannot be members of structures.
    "HWY_DISABLED_TARGETS=(HWY_SVE|HWY_SVE_256|HWY_SVE2|HWY_SVE2_128)")
