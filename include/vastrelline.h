/* SPDX-License-Identifier: Apache-2.0 */

/* Vastrelline: turns the raw frame of an intra-oral X-ray sensor into a diagnostic image.
 *
 * Eight plain C functions. A host hands over one calibrated frame, the path of a profile file and the name
 * of a section in it; the profile lists the stages that run and holds their settings. Everything is read
 * anew on every call: there is nothing to initialise and nothing to tear down.
 *
 * Frames    width * height unsigned 16-bit pixels, row after row, top row first, no gap between rows.
 *           The expected range is 0 .. (1 << BITSTORED) - 1, 0..4095 at the default of 12 bits; larger
 *           values are safe. A frame's width * height must be below 2^29 pixels.
 * Calls     plain C functions of eight undecorated names, cdecl on 32-bit Windows; elsewhere there is one
 *           convention only. Sizes and codes are of 32 bits, switches of 8. SensorGeometry is ten 32-bit
 *           numbers, 40 bytes without gaps.
 * Changes   all processing functions but ImageProcessingCR change their input, also where they fail: hand
 *           over a copy where the raw frame is to be kept. The configured family, which is the calls with a
 *           PROCMODE of 2 and those of ImageProcessingS and ImageProcessing_NS with 3, writes the sensor's
 *           ten values into the profile, and logs appear beside it: hand over a profile of the host's own,
 *           in a folder that it may write to.
 * Text      terminated narrow text. On Windows in the code page of the calling thread
 *           (ImageProcessing_NS: UTF-8); elsewhere UTF-8, where bytes that are no valid UTF-8 reach the
 *           file system as they are. On POSIX systems '/' and '\' both separate folders. A null pointer
 *           counts as the empty text.
 * Profile   each processing call reads the profile once, at its start, and all its stages see that version. A
 *           file that was saved less than 20 ms before may be half written: the call waits until it is quiet.
 *           What a call has to write there (the sensor's values, in one replacement) never undoes a save of
 *           another program. For other programs that lock or save a profile a call waits 0.2 s at most, and
 *           as long again for each other file that it writes.
 * Threads   every function may be called from any thread. Processing calls of a process run one after the
 *           other: a second one waits until the first is done. On the same thread it does not wait, so that a
 *           host may call again while a message box of the library is open (on Windows calls of other threads
 *           wait until it is dismissed). Getdose_ImageInfo and RotateImage never wait for a running call. A
 *           child that the host has forked while a call was running must not call. A call returns when all
 *           its work is done; a square median of the configured chain shares its rows between two threads of
 *           its own, all else runs on the caller's.
 * Messages  two of the library's own: on Windows modal message boxes, which hold the call until somebody
 *           dismisses them, elsewhere lines on standard error. A host that runs without a person sees to
 *           it that neither comes:
 *           "Wrong parameters of round-corner mask" comes where Rotation and Flip of the sensor's
 *           geometry are known and its corner sizes do not fit the full frame: RCCutOff above half of the
 *           smaller side (rounded down), or RCCutOffR above that side; so any size above 0 as long as
 *           FrameWidth or FrameHeight is 0. Without a profile of the sensor's own the first call of the
 *           configured family writes such values into the profile and shows nothing; every later call with
 *           that profile shows the message, whatever its PROCMODE, but ImageProcessingCR and calls with a
 *           geometry of the caller's. The call goes on: the exposure curve counts dark corners as if they
 * were object, later steps look for them in the frame. Give the full values in the sensor's own profile (such
 * as profiles/sensor/Brindmap.ini) or as the caller's geometry; where nobody knows them, a Rotation of -10.
 *           The figures of the exposure decision come with a PROCMODE of 3 where the section has an
 *           MSGBOX_ENABLE other than 0.
 *           A third, "No Image to Save !", cannot be kept away from a call that saves a bitmap, its own or
 *           that of a backup: it comes where memory runs out before the bitmap is written.
 * Failures  no call throws or ends the process; every processing call returns one of the codes below. Logs,
 *           dumps and curve files that cannot be written change neither code nor pixels.
 *
 * A whole call, from a frame in memory to the enhanced frame:
 *
 *     uint16_t frame[64 * 48] = {0};
 *     uint16_t enhanced[64 * 48];
 *     int32_t code = ImageProcessing(frame, enhanced, 64, 48, "profile.ini", "General", 0, 0);
 *     if (code != VASTRELLINE_OK) {
 *         fprintf(stderr, "the frame was not processed: code %d\n", (int)code);
 *     }
 */
#ifndef VASTRELLINE_H
#define VASTRELLINE_H

#include <stdint.h>

/* The version of this header. A built library has its own inside: `vastrelline --version --library FILE`. */
#define VASTRELLINE_VERSION_MAJOR 1
#define VASTRELLINE_VERSION_MINOR 0
#define VASTRELLINE_VERSION_PATCH 0
#define VASTRELLINE_VERSION_STRING "1.0.0-dev"

#if defined(_WIN32)
#define VASTRELLINE_CALL __cdecl
#else
#define VASTRELLINE_CALL
#endif

#if defined(_WIN32)
#if defined(VASTRELLINE_BUILDING) || defined(VASTRELLINE_STATIC)
#define VASTRELLINE_API
#else
#define VASTRELLINE_API __declspec(dllimport)
#endif
#else
#define VASTRELLINE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Codes of the six processing functions. Tests of arguments are made in the order 1, 2, 3, 4. */
#define VASTRELLINE_OK 0
/* The profile is no file that can be opened and read: missing, a folder, a pipe or a device, without
 * permission, or of more than 64 MiB. Also with a null or empty iniPath. */
#define VASTRELLINE_NO_PROFILE 1
/* input is null. Nothing was touched, whatever the size. */
#define VASTRELLINE_NO_INPUT 2
/* output is null. No mapping was applied. */
#define VASTRELLINE_NO_OUTPUT 3
/* sectionName is empty, and the profile selects a chain that needs one. */
#define VASTRELLINE_NO_SECTION 4
/* The frame was processed, but the bitmap could not be saved. */
#define VASTRELLINE_NO_BITMAP 5
/* Memory ran out, the frame has 2^29 pixels or more (looked at before the codes above where input is there;
 * ImageProcessingCR: behind them), the system failed to read the profile or the sensor's profile although it
 * is there (a failing disk, no free file handle, a writer who is still at work on it after 0.2 s), or another
 * internal failure. The content of output is then undefined. */
#define VASTRELLINE_INTERNAL_FAILURE 6

/* How the delivered frame lies on the sensor; a caller's own values in place of the profile's. All in
 * pixels of the full sensor frame but for rotation and flip. */
struct SensorGeometry {
    int32_t Rotation;     /* 0, 1 or 2: how the frame was turned; any other value is unknown */
    int32_t Flip;         /* 0..3: how the frame was mirrored; any other value is unknown */
    int32_t RCCutOff;     /* size of the chamfer of both rounded corners; 0 or less: none */
    int32_t RCCutOffR;    /* size of the rounding of both; where it reaches further, it counts */
    int32_t FrameWidth;   /* of the full sensor frame, before any cut */
    int32_t FrameHeight;  /* of the full sensor frame, before any cut */
    int32_t ImgCutLeft;   /* columns cut off at the left */
    int32_t ImgCutTop;    /* rows cut off at the top */
    int32_t ImgCutRight;  /* columns cut off at the right */
    int32_t ImgCutBottom; /* rows cut off at the bottom */
};

/* Processes one frame.
 *
 * input                 width * height pixels. Changed in place whatever the result, unless it is null (with
 *                       6 it may be as it was): the exposure curve clips its highlights and lifts very dark
 *                       frames. It is made for 12 bits; larger pixels count as 4095
 * output                width * height pixels, receives the enhanced frame; must not overlap input
 * width, height         in pixels; 0 or less: the arguments are tested, then nothing is done and the
 *                       result is 0
 * iniPath               the profile file. The section's PROCMODE selects the chain: 2 the configured one,
 *                       whose stages the section lists; any other, and none, the fixed one, whose stages the
 *                       section switches on and off in the program's order
 * sectionName           the section of the profile that holds the settings; empty: the fixed chain runs on
 *                       its defaults
 * applyMapping          not 0: afterwards every pixel of output goes through the table
 *                       trunc((pixel + 3000) / 10000.0 * 4095), so that 0 becomes 1228 and 4095 becomes
 *                       2905; pixels above 4095 count as 4095. Runs on any code but 6, as long as there are
 *                       input and output
 * applySpotCorrection   not 0: evens out the brightness of input, in place, before anything else: dark
 *                       neighbourhoods are lifted, bright ones lowered
 *
 * Returns 0, 1, 2, 3, 4 or 6. With any code but 0 the pixels of output stay as they were (6: undefined),
 * apart from the mapping. Side effects as the profile asks: the log ExtraOralLog.txt beside the profile
 * (SAVE_LOG), raw dumps in WRITE_PATH (SAVE_IMAGE), a backup of input and result in SAVE_BACKUPPATH
 * (SAVE_BACKUP).
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessing(uint16_t* input, uint16_t* output, int32_t width,
                                                         int32_t height, const char* iniPath,
                                                         const char* sectionName, uint8_t applyMapping,
                                                         uint8_t applySpotCorrection);

/* As ImageProcessing, with the sensor's geometry of the caller, and a chain more: a PROCMODE of 3 decides
 * from the frame whether the exposure was too low, leaves the figures for Getdose_ImageInfo, and runs a low
 * frame through a fixed sequence with the keys of section "IP_LOWMODE", any other through the section's list.
 *
 * geometry   the geometry of this frame, or null for the profile's; read only. It tells where the sensor's
 *            rounded corners lie. The fixed chain fills the corners of the profile's all the same, and says
 *            so where their sizes are wrong
 *
 * Returns 0, 1, 2, 3, 4 or 6.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessingS(uint16_t* input, uint16_t* output, int32_t width,
                                                          int32_t height, const char* iniPath,
                                                          const char* sectionName, uint8_t applyMapping,
                                                          uint8_t applySpotCorrection,
                                                          const struct SensorGeometry* geometry);

/* As ImageProcessing, but the enhanced frame leaves the library only as an 8-bit bitmap file.
 *
 * bitmapPath   where the bitmap goes; empty or null: the frame is processed and nothing is saved
 *
 * Returns 0, 1, 2, 4, 5 or 6. The bitmap shows levels 0..4095 in 256 greys; it appears under its name only
 * when it is whole, and replaces a file that was there. Where memory runs out before it is written, an empty
 * file takes its place, also that of a bitmap that was there: the result is 5, and "No Image to Save !"
 * comes.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessing_N(uint16_t* input, int32_t width, int32_t height,
                                                           const char* iniPath, const char* sectionName,
                                                           uint8_t applyMapping, uint8_t applySpotCorrection,
                                                           const char* bitmapPath);

/* As ImageProcessing_N, with the sensor's geometry of the caller and the chain that decides about the
 * exposure, as in ImageProcessingS, and with all three texts in UTF-8, of at most 260 UTF-16 units each: a
 * longer text counts as empty.
 *
 * Returns 0, 1, 2, 4, 5 or 6.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessing_NS(uint16_t* input, int32_t width, int32_t height,
                                                            const char* iniPath, const char* sectionName,
                                                            uint8_t applyMapping, uint8_t applySpotCorrection,
                                                            const char* bitmapPath,
                                                            const struct SensorGeometry* geometry);

/* As ImageProcessing_N, for a caller that names the sensor itself. Both arguments are for a PROCMODE of 2;
 * any other runs the fixed chain, which drops them.
 *
 * sensorFolder   name of the folder that holds the sensor's own profile; empty or null: taken from the
 *                settings of the machine
 * sensorMode     2: the frame has twice the sensor's resolution; any other value has no effect
 *
 * Returns 0, 1, 2, 4, 5 or 6.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessing_NE(uint16_t* input, int32_t width, int32_t height,
                                                            const char* iniPath, const char* sectionName,
                                                            uint8_t applyMapping, uint8_t applySpotCorrection,
                                                            const char* bitmapPath, const char* sensorFolder,
                                                            int32_t sensorMode);

/* Processes a frame that arrives complete, without the sensor's rounded corners, through the fixed chain
 * without its pyramid, whatever the section's PROCMODE. input is only read. A backup set holds the profile
 * too.
 *
 * Returns 0, 1, 2, 3 or 6.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL ImageProcessingCR(uint16_t* input, uint16_t* output, int32_t width,
                                                           int32_t height, const char* iniPath,
                                                           const char* sectionName);

/* The figures of the last exposure decision of the process; all zero before the first one. Each pointer may
 * be null, which leaves that figure out. Only ImageProcessingS and ImageProcessing_NS with a PROCMODE of 3
 * decide.
 *
 * objectMedian   grey level of the object's median; where no level passes it, half of objectTotal, which is a
 *                number of pixels
 * objectTotal    pixels that belong to the object
 * lowSignal      those of them below level 100
 * lowRatio       lowSignal / objectTotal; not a number when there was no object
 * lowExposure    1 if lowRatio was above the threshold, else 0
 */
VASTRELLINE_API void VASTRELLINE_CALL Getdose_ImageInfo(int32_t* objectMedian, int32_t* objectTotal,
                                                        int32_t* lowSignal, double* lowRatio,
                                                        int32_t* lowExposure);

/* Turns, then mirrors a frame in place. After a quarter turn the frame is height pixels wide and width high;
 * the mirror then still takes the width given, so that on a frame that is not square whoever wants both makes
 * two calls.
 *
 * frame      width * height pixels; sizes of 0 or less hold nothing to turn
 * rotation   1: 90 degrees clockwise, 2: 90 degrees counterclockwise, 3: 180 degrees, else none
 * flip       1: left to right, 2: top to bottom, 3: both, else none
 *
 * Returns 1; 0 for a null frame, one of 2^29 pixels or more, or if memory ran out, and the frame is as it
 * was.
 */
VASTRELLINE_API int32_t VASTRELLINE_CALL RotateImage(uint16_t* frame, int32_t width, int32_t height,
                                                     int32_t rotation, int32_t flip);

#ifdef __cplusplus
}
#endif

#endif
