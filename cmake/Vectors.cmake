# For every target with vector code (Highway).
# Vectors without a fixed size cannot be members of structures.
set(disabled_targets "HWY_SVE|HWY_SVE_256|HWY_SVE2|HWY_SVE2_128")
if(CMAKE_CXX_FLAGS MATCHES -fsanitize)
    # With sanitizers some kernels take minutes to compile: one instruction set for each width of vectors is enough.
    string(APPEND disabled_targets "|HWY_SSSE3|HWY_SSE4|HWY_AVX3_DL")
endif()
set(KVX_VECTOR_DEFINITIONS
    # The fallback for old processors is the one of 128-bit vectors, not of single lanes, whose kernels tell lanes apart
    # by parity. It is switched off for GCC before 12.3 because of bug 106322, met on 32-bit and big-endian machines; the
    # tests run it.
    HWY_BROKEN_EMU128=0
    # Off unless asked for: AVX-512 with lookups in 128 bytes.
    HWY_WANT_AVX3_DL
    "HWY_DISABLED_TARGETS=(${disabled_targets})")
