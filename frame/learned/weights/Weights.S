/* The files of weights, as read-only bytes between two symbols each. */
    .section .rodata
.macro weights name, file
    .balign 16
    .hidden \name\()Begin
    .hidden \name\()End
    .global \name\()Begin
    .global \name\()End
\name\()Begin:
    .incbin "\file"
\name\()End:
.endm

    weights kvxBayerFine, "bayer-fine.kvxn"
    weights kvxBayerFineNoise, "bayer-fine-noise.kvxn"
    weights kvxBayerSwift, "bayer-swift.kvxs"
    weights kvxTrueSenseFine, "truesense-fine.kvxn"
    weights kvxTrueSenseFineNoise, "truesense-fine-noise.kvxn"
    weights kvxTrueSenseSwift, "truesense-swift.kvxs"

    .section .note.GNU-stack, "", %progbits
