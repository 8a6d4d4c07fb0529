/* SPDX-License-Identifier: Apache-2.0 */

/* A host in plain C, without a C++ runtime of its own, that loads the library and then has no memory any
 * more, for good. Every export has to come back with a code, in the thread that loaded the library as in
 * another one that was there before.
 *
 *     ExhaustedHost LIBRARY FOLDER
 */
#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "vastrelline.h"

static volatile int isExhausted = 0;

/* The C library's own, under the names that it keeps for hosts with a malloc of their own. */
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);

static void* Refuse(void) {
    errno = ENOMEM;
    return NULL;
}

void* malloc(size_t size) { return isExhausted ? Refuse() : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return isExhausted ? Refuse() : __libc_calloc(count, size); }
void* realloc(void* block, size_t size) { return isExhausted ? Refuse() : __libc_realloc(block, size); }
void* memalign(size_t alignment, size_t size) {
    return isExhausted ? Refuse() : __libc_memalign(alignment, size);
}
void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }
int posix_memalign(void** block, size_t alignment, size_t size) {
    *block = memalign(alignment, size);
    return *block == NULL ? ENOMEM : 0;
}

enum { kWidth = 24, kHeight = 20, kPixels = kWidth * kHeight };
static uint16_t input[kPixels];
static uint16_t output[kPixels];

/* dlsym gives a data pointer; POSIX promises that it holds a function's address, C has no cast for it. */
#define LOAD(library, name)                              \
    do {                                                 \
        void* const symbol = dlsym(library, #name);      \
        if (symbol == NULL) exit(3);                     \
        memcpy(&functions.name, &symbol, sizeof symbol); \
    } while (0)

static struct {
    int32_t (*ImageProcessing)(uint16_t*, uint16_t*, int32_t, int32_t, const char*, const char*, uint8_t,
                               uint8_t);
    int32_t (*ImageProcessingS)(uint16_t*, uint16_t*, int32_t, int32_t, const char*, const char*, uint8_t,
                                uint8_t, const struct SensorGeometry*);
    int32_t (*ImageProcessing_N)(uint16_t*, int32_t, int32_t, const char*, const char*, uint8_t, uint8_t,
                                 const char*);
    int32_t (*ImageProcessing_NS)(uint16_t*, int32_t, int32_t, const char*, const char*, uint8_t, uint8_t,
                                  const char*, const struct SensorGeometry*);
    int32_t (*ImageProcessing_NE)(uint16_t*, int32_t, int32_t, const char*, const char*, uint8_t, uint8_t,
                                  const char*, const char*, int32_t);
    int32_t (*ImageProcessingCR)(uint16_t*, uint16_t*, int32_t, int32_t, const char*, const char*);
    void (*Getdose_ImageInfo)(int32_t*, int32_t*, int32_t*, double*, int32_t*);
    int32_t (*RotateImage)(uint16_t*, int32_t, int32_t, int32_t, int32_t);
} functions;

static char profile[4096];
static char bitmap[4096];
static int wrongCodes = 0;

static void Expect(const char* name, int32_t expected, int32_t code) {
    if (code == expected) return;
    fprintf(stderr, "%s gives %d in place of %d\n", name, (int)code, (int)expected);
    ++wrongCodes;
}

static void* CallEverything(void* unused) {
    int32_t median = 0, total = 0, low = 0, isLow = 0;
    double ratio = 0;
    Expect("ImageProcessing", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessing(input, output, kWidth, kHeight, profile, "General", 1, 1));
    Expect("ImageProcessingS", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessingS(input, output, kWidth, kHeight, profile, "General", 1, 1, NULL));
    Expect("ImageProcessing_N", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessing_N(input, kWidth, kHeight, profile, "General", 1, 1, bitmap));
    Expect("ImageProcessing_NS", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessing_NS(input, kWidth, kHeight, profile, "General", 1, 1, bitmap, NULL));
    Expect("ImageProcessing_NE", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessing_NE(input, kWidth, kHeight, profile, "General", 1, 1, bitmap, "", 0));
    Expect("ImageProcessingCR", VASTRELLINE_INTERNAL_FAILURE,
           functions.ImageProcessingCR(input, output, kWidth, kHeight, profile, "General"));
    Expect("RotateImage", 0, functions.RotateImage(input, kWidth, kHeight, 1, 1));
    functions.Getdose_ImageInfo(&median, &total, &low, &ratio, &isLow);
    return unused;
}

/* There before memory runs out, as a host's workers are. */
static pthread_mutex_t gate = PTHREAD_MUTEX_INITIALIZER;

static void* CallBehindTheGate(void* unused) {
    pthread_mutex_lock(&gate);
    pthread_mutex_unlock(&gate);
    return CallEverything(unused);
}

int main(int argc, char** argv) {
    void* library = NULL;
    pthread_t worker;
    FILE* file = NULL;
    if (argc != 3) return 2;
    snprintf(profile, sizeof profile, "%s/exhausted.ini", argv[2]);
    snprintf(bitmap, sizeof bitmap, "%s/exhausted.bmp", argv[2]);
    file = fopen(profile, "w");
    if (file == NULL) return 2;
    fputs("[General]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=10\n", file);
    fclose(file);

    library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    LOAD(library, ImageProcessing);
    LOAD(library, ImageProcessingS);
    LOAD(library, ImageProcessing_N);
    LOAD(library, ImageProcessing_NS);
    LOAD(library, ImageProcessing_NE);
    LOAD(library, ImageProcessingCR);
    LOAD(library, Getdose_ImageInfo);
    LOAD(library, RotateImage);

    pthread_mutex_lock(&gate);
    if (pthread_create(&worker, NULL, CallBehindTheGate, NULL) != 0) return 2;
    isExhausted = 1;
    CallEverything(NULL);
    pthread_mutex_unlock(&gate);
    pthread_join(worker, NULL);
    isExhausted = 0;

    /* Memory is back: the library still works. */
    Expect("RotateImage with memory", 1, functions.RotateImage(input, kWidth, kHeight, 1, 0));
    Expect("ImageProcessing with memory", VASTRELLINE_OK,
           functions.ImageProcessing(input, output, kWidth, kHeight, profile, "General", 0, 0));
    return wrongCodes == 0 ? 0 : 1;
}
