/* Converts a 12-bit Bayer frame to an 8-bit RGB image in C. */
#include <KvxDemosaicing/KvxDemosaicing.h>
#include <stdio.h>
#include <stdlib.h>

enum { WIDTH = 64, HEIGHT = 48 };

int main(void) {
    /* Stands for a camera frame: uniform grey, 2048 of 4095. */
    static uint16_t raw[HEIGHT][WIDTH];
    static uint8_t rgb[HEIGHT][WIDTH][3];
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x) raw[y][x] = 2048;

    const _KvxImage src = KvxImage_Make(KvxFormat_BayerRG12, WIDTH, HEIGHT, sizeof raw[0], raw);
    _KvxImage dst = KvxImage_Make(KvxFormat_RGB8, WIDTH, HEIGHT, sizeof rgb[0], rgb);

    KvxBayer* bayer = KvxBayer_CreateComponent();
    const uint32_t result = KvxBayer_ConvertImage(bayer, &src, &dst);
    KvxBayer_DeleteComponent(bayer);
    if (KvxResult_Failed(result)) {
        fprintf(stderr, "0x%08X: %s\n", (unsigned)result, KvxResult_Text(result));
        return EXIT_FAILURE;
    }
    printf("%u %u %u\n", rgb[10][10][0], rgb[10][10][1], rgb[10][10][2]);
    return EXIT_SUCCESS;
}
