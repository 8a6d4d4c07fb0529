/* SPDX-License-Identifier: Apache-2.0 */

/* A host program in plain C: reads one raw frame, has it enhanced, and writes the result beside it.
 *
 *     process_frame FRAME WIDTHxHEIGHT PROFILE SECTION OUTPUT
 *
 * FRAME and OUTPUT hold unsigned 16-bit pixels in the byte order of this machine, row after row, top row
 * first, and nothing else. Prints the library's code; exits with 0 if that was 0 and OUTPUT was written.
 */
#include <stdio.h>
#include <stdlib.h>
#include <vastrelline.h>

/* More than any sensor delivers, and far below what the library takes. */
#define LARGEST_SIDE 20000

/* The pixels of a file that holds exactly `count` of them, or null. The caller frees them. */
static uint16_t* ReadFrame(const char* path, size_t count) {
    FILE* file = fopen(path, "rb");
    if (file == NULL) return NULL;
    uint16_t* frame = malloc(count * sizeof *frame);
    int isWhole = frame != NULL && fread(frame, sizeof *frame, count, file) == count && fgetc(file) == EOF;
    fclose(file);
    if (isWhole) return frame;
    free(frame);
    return NULL;
}

static int WriteFrame(const char* path, const uint16_t* frame, size_t count) {
    FILE* file = fopen(path, "wb");
    if (file == NULL) return 0;
    int isWritten = fwrite(frame, sizeof *frame, count, file) == count;
    return fclose(file) == 0 && isWritten;
}

int main(int argc, char** argv) {
    int width = 0;
    int height = 0;
    if (argc != 6 || sscanf(argv[2], "%dx%d", &width, &height) != 2 || width < 1 || height < 1 ||
        width > LARGEST_SIDE || height > LARGEST_SIDE) {
        fprintf(stderr, "usage: process_frame FRAME WIDTHxHEIGHT PROFILE SECTION OUTPUT\n");
        return EXIT_FAILURE;
    }
    size_t count = (size_t)width * (size_t)height;

    uint16_t* input = ReadFrame(argv[1], count);
    uint16_t* output = calloc(count, sizeof *output);
    int isDone = 0;
    if (input == NULL || output == NULL) {
        fprintf(stderr, "%s: not a frame of %d x %d pixels\n", argv[1], width, height);
    } else {
        int32_t code = ImageProcessing(input, output, width, height, argv[3], argv[4], 0, 0);
        printf("ImageProcessing returned %d\n", (int)code);
        isDone = code == VASTRELLINE_OK && WriteFrame(argv[5], output, count);
        if (code == VASTRELLINE_OK && !isDone) fprintf(stderr, "%s: cannot be written\n", argv[5]);
    }
    free(output);
    free(input);
    return isDone ? EXIT_SUCCESS : EXIT_FAILURE;
}
