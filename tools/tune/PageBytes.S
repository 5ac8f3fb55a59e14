/* The files of the page as read-only bytes between two symbols each. */
    .section .rodata
.macro page name, file
    .hidden kvx\name\()Begin
    .hidden kvx\name\()End
    .global kvx\name\()Begin
    .global kvx\name\()End
kvx\name\()Begin:
    .incbin "\file"
kvx\name\()End:
.endm

#define KVX_PAGE(name, file, type) page name, file ;
#include "tools/tune/PageList.h"

    .section .note.GNU-stack, "", %progbits
