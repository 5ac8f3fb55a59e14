/* A program that loads the library when it needs it and unloads it afterwards: unload LIBRARY */
#define _POSIX_C_SOURCE 200809L
#include <dlfcn.h>
#include <stdlib.h>
#include <time.h>

#include "KvxDemosaicing/KvxBayerFlat.h"
#include "KvxDemosaicing/KvxPixelFormat.h"

enum { kSize = 2048 };

int main(int argc, char** argv) {
    void* library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
    if (!library) return EXIT_FAILURE;
    uint32_t (*convert)(const _KvxImage*, _KvxImage*, int) = NULL;
    *(void**)&convert = dlsym(library, "BayerToColor");
    uint8_t* frame = calloc(kSize, kSize);
    uint8_t* picture = malloc(3 * kSize * kSize);
    if (!convert || !frame || !picture) return EXIT_FAILURE;
    const _KvxImage src = KvxImage_Make(KvxFormat_BayerRG8, kSize, kSize, kSize, frame);
    _KvxImage dst = KvxImage_Make(KvxFormat_RGB8, kSize, kSize, 3 * kSize, picture);
    for (int algorithm = 0; algorithm < 3; ++algorithm)
        if (convert(&src, &dst, algorithm) != 0) return EXIT_FAILURE;
    dlclose(library);
    const struct timespec aMoment = {0, 50000000}; /* in which waiting threads would run code that is gone */
    nanosleep(&aMoment, NULL);
    free(frame);
    free(picture);
    return EXIT_SUCCESS;
}
