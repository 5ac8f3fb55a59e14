/* Converts a packed camera frame to a display image in C, with black level, white balance and sRGB tone curve. */
#include <KvxFrame/KvxFrameC.h>
#include <stdio.h>
#include <stdlib.h>

enum { WIDTH = 64, HEIGHT = 48 };

static uint16_t samples[HEIGHT][WIDTH];
static uint8_t raw[HEIGHT * WIDTH * 3 / 2];
static uint8_t rgb[HEIGHT][WIDTH][3];

/* Stands for a camera: 12 bits packed, uniform grey half way between black (256) and white. */
static uint32_t TakeFrame(KvxFrameSource* frame) {
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x) samples[y][x] = 256 + (4095 - 256) / 2;
    KvxFrameSource words = {.data = samples, .width = WIDTH, .height = HEIGHT, .capacity = sizeof samples};
    uint32_t result = KvxFrame_FormatByName("BayerRG12", &words.format);
    KvxFrameDestination packed = {.data = raw, .width = WIDTH, .height = HEIGHT, .capacity = sizeof raw};
    if (!result) result = KvxFrame_FormatByName("BayerRG12p", &packed.format); /* or "pRCC", "SCF1WBWG12p", ... */
    if (!result) result = KvxFrame_Relayout(&words, &packed, 0);
    *frame = (KvxFrameSource){.data = raw, .width = WIDTH, .height = HEIGHT, .capacity = sizeof raw};
    frame->format = packed.format;
    return result;
}

int main(void) {
    KvxFrameSource frame;
    KvxFrameDestination picture = {.data = rgb, .width = WIDTH, .height = HEIGHT, .capacity = sizeof rgb};
    KvxFrameConverter* converter = NULL; /* reuse it: no allocation after the first frame */
    if (TakeFrame(&frame) || KvxFrame_FormatByName("RGB8", &picture.format) ||
        KvxFrameConverter_Create(frame.format.family, &converter)) {
        fprintf(stderr, "%s\n", KvxFrame_LastError());
        return EXIT_FAILURE;
    }
    const double black[4] = {256, 256, 256, 256};
    const uint32_t failed = KvxFrameConverter_SetAlgorithm(converter, "ipp") ||
                            KvxFrameConverter_SetBlackLevel(converter, black) ||
                            KvxFrameConverter_SetWhiteBalance(converter, KvxFrameWhiteBalance_Auto) ||
                            KvxFrameConverter_SetTone(converter, KvxFrameTone_Srgb) ||
                            KvxFrameConverter_Convert(converter, &frame, &picture);
    if (failed) fprintf(stderr, "%s\n", KvxFrameConverter_LastError(converter));
    KvxFrameConverter_Delete(converter);
    if (failed) return EXIT_FAILURE;

    char name[32];
    uint32_t size = sizeof name;
    if (KvxFrame_FormatName(&frame.format, name, &size)) return EXIT_FAILURE;
    printf("%s to RGB8: %u %u %u\n", name, rgb[0][0][0], rgb[0][0][1], rgb[0][0][2]);
    return EXIT_SUCCESS;
}
