/* velora.h: rebuilds a printer's colour tables from compact packs; the records that a caller fills
 * and the functions that it calls, in C99 and C++.
 *
 * Room: include/velora. The caller owns every record, every byte that a record points to, and the
 * output buffer, and keeps them unchanged until the call returns. The table call copies none of
 * them and keeps none of them. Failures are results; no exception leaves a function of this header.
 *
 * A table in a few lines:
 *
 *   ImagingBlob pack = {cbPack, abPack};
 *   const ImagingBlob* apPacks[1] = {&pack};
 *   ReferenceTable reference = {abPlanes, {abC, abM, abY, abK}, {2457, 2457, 2457, 2457}};
 *   static unsigned char abTable[VELORA_SIZE_RGB_TO_CMYK];
 *   if (_velora_v2_ReconstructTable_Moth_Posix_So(
 *           platform, supplyFamily, productVariant, CTR_TABLE_CMYK, CTR_THEME_0, CTR_MEDIA_P,
 *           CTR_AXIS_P, 1, apPacks, &reference, NULL, sizeof abTable, abTable))
 *     print_with(abTable);
 *
 * What is printed: lines of the form
 *   [CTR] function (line 61): "message"
 * on standard error, both for failures and for the steps of a decode; velora_set_log() of reason.h
 * takes them elsewhere. Why a call was refused, velora_last_reason() says there.
 *
 * Threads: any thread may call at any time; calls are served one after another, and a call out of
 * a log callback is refused. At most 5 threads whose kernel ids agree in their low 4 bits can be
 * known at once; a call on a sixth is refused.
 *
 * Stack: a table call needs about 20 KiB. The longest chain of components that a pack may hold
 * takes it to 384 KiB.
 */
#pragma once

#include <stdint.h>
#include <velora/version.h> /* CMake writes it */

#include "velora/export.h"
#include "velora/reason.h"

/* An enumeration that takes any 32-bit value, known or not. */
#ifdef __cplusplus
#define VELORA_ENUM_32 : uint32_t
#else
#define VELORA_ENUM_32
#endif

/* ------------------------------------------------------------------------------ table shapes -- */

/* Bytes of a finished table; the caller's buffer has exactly this size. A colour table samples its
 * RGB input on a grid of 17 x 17 x 17 points. It is planar: the byte of plane c at grid point
 * (i, j, k), each in [0..17), is at c * 4913 + i * 289 + j * 17 + k. The three axes run as in
 * the printer's reference planes. The pack's colour map sets the order of the planes; it is C, M,
 * Y, K or R, G, B by custom. */
#define VELORA_SIZE_PLANE 4913
#define VELORA_SIZE_RGB_TO_CMYK 19652 /* four planes */
#define VELORA_SIZE_RGB_TO_RGB 14739  /* three planes */
#define VELORA_SIZE_GRAY_CURVE 256    /* one byte for each input level */

/* Bytes of a key of a correction: a SHA-256 digest. */
#define VELORA_SIZE_KEY 32

/* Most packs of one call. */
#define VELORA_MAX_PACKS 10

/* -------------------------------------------------------------------------------- print mode -- */

/* Table, theme, medium and axis together are the print mode: the keys by which a pack's tables are
 * chosen. The numbers are fixed. */

typedef enum ctr_table_type VELORA_ENUM_32 {
  CTR_TABLE_RGB = 0,        /* RGB to RGB; see CTR_THEME_GRAYSCALE */
  CTR_TABLE_CMYK = 1,       /* RGB to CMYK; the gray curve for CTR_AXIS_MONO */
  CTR_TABLE_FUSER_BLOB = 2, /* settings for the fuser, opaque bytes */
  CTR_TABLE_FORCE_32 = 0x7FFFFFFF
} ctr_table_type;

/* The packs decide what a theme means, except for CTR_THEME_GRAYSCALE. */
typedef enum ctr_theme_type VELORA_ENUM_32 {
  CTR_THEME_0 = 0,
  CTR_THEME_1 = 1,
  CTR_THEME_2 = 2,
  CTR_THEME_3 = 3,
  CTR_THEME_4 = 4,
  CTR_THEME_GRAYSCALE = 5, /* with CTR_TABLE_RGB: RGB to grayscale, which the table entry refuses */
  CTR_THEME_6 = 6,
  CTR_THEME_7 = 7,
  CTR_THEME_8 = 8,
  CTR_THEME_9 = 9,
  CTR_THEME_10 = 10,
  CTR_THEME_FORCE_32 = 0x7FFFFFFF
} ctr_theme_type;

/* Named by the character of the medium in packet keys and messages. */
typedef enum ctr_media_type VELORA_ENUM_32 {
  CTR_MEDIA_P = 0,
  CTR_MEDIA_G = 1,
  CTR_MEDIA_C = 2,
  CTR_MEDIA_H = 3,
  CTR_MEDIA_FORCE_32 = 0x7FFFFFFF
} ctr_media_type;

/* Named likewise; CTR_AXIS_MONO has the character M. */
typedef enum ctr_axis_type VELORA_ENUM_32 {
  CTR_AXIS_K = 0,
  CTR_AXIS_P = 1,
  CTR_AXIS_MONO = 2, /* the black channel alone */
  CTR_AXIS_FORCE_32 = 0x7FFFFFFF
} ctr_axis_type;

/* -------------------------------------------------------------------------- caller records -- */

/* One pack. */
typedef struct ImagingBlob {
  uint32_t size;       /* bytes of `data`; a pack is at most 32767 bytes long */
  const uint8_t* data; /* the pack */
} ImagingBlob;

/* The tables that the printer holds, from which a pack's tables are differences. A width table has
 * 4 bits for each coefficient, low nibble first. A width table, and nothing else here, may be an
 * LZMA stream: it is taken for one when it starts with the bytes 0x5D, 0, 0. acbCbat is then the
 * stream's length, and the size that the stream states has the limits given there. */
typedef struct ReferenceTable {
  const uint8_t* data;      /* CTR_AXIS_MONO: a gray curve of 256 bytes; otherwise four planes of
                               4913 bytes in the order C, M, Y, K */
  const uint8_t* apCbat[4]; /* width tables in the order C, M, Y, K; K alone for CTR_AXIS_MONO */
  uint16_t acbCbat[4];      /* their bytes, in the same order: 128 for CTR_AXIS_MONO, otherwise
                               2457 to 2464; fewer is an error, more are cut off with a message */
} ReferenceTable;

/* Last touches to finished tables. A channel is corrected only if its key is the SHA-256 digest of
 * the channel as it was before correction; otherwise it is delivered without, and that is no
 * failure. A corrected byte is the byte plus the correction's byte minus 128, held to 0 to 255. */
typedef struct TableCorrections {
  const uint8_t* apKeys[4]; /* keys of 32 bytes in the order K, C, M, Y; null: no correction for
                               this channel */
  const uint8_t* data;      /* CTR_AXIS_MONO: 256 bytes; otherwise four planes of 4913 bytes in the
                               order C, M, Y, K (not the order of the keys); null: none at all */
} TableCorrections;

/* The process-wide objects of the library, handed from one layer to the next by whoever boots. */
typedef struct BootRecord BootRecord;

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------- table entry -- */

/* Rebuilds one table: boots the library, reads the packs, builds the table, and cleans up again.
 *
 *   ePlatform             the printer platform, [1..13] or 127
 *   eSupplyFamily         the supply family, [0..9] or 127
 *   eProductVariant       the product variant, [0..5]
 *   eTableType ...        the print mode
 *   nVelcases             how many packs, [1..10]
 *   apVelcases            the packs, nVelcases pointers: all of eSupplyFamily, and one of channel
 *                         127, the printer's, among them
 *   pReferenceTable       required for CTR_TABLE_RGB and CTR_TABLE_CMYK, otherwise unused
 *   pTableCorrections     null: no corrections
 *   cbReconstructedTable  bytes of the buffer: the size of the table, see above; for
 *                         CTR_TABLE_FUSER_BLOB the blob's size or more. The call does not report
 *                         how long the blob is, and leaves the bytes behind it as they were;
 *                         Velora::getFuserBlobSize() of the C++ headers reports the size
 *   abReconstructedTable  the buffer
 *
 * Returns 1 and fills the buffer, or returns 0, leaves the buffer as it was and has printed why;
 * only a boot that fails, for want of memory or of a place for the thread, and a call out of a log
 * callback print nothing.
 *
 * The call leaves open what it finds open, and a thread known that it finds known: it may be made
 * beside open layers, also inside a Try. Each call keeps a boot record of three pointers allocated,
 * some 32 bytes with the allocator's own, and nothing else. */
VELORA_API int _velora_v2_ReconstructTable_Moth_Posix_So(
    int ePlatform, int eSupplyFamily, int eProductVariant, ctr_table_type eTableType,
    ctr_theme_type eThemeType, ctr_media_type eMediaType, ctr_axis_type eAxisType,
    unsigned int nVelcases, const ImagingBlob** apVelcases, const ReferenceTable* pReferenceTable,
    const TableCorrections* pTableCorrections, unsigned int cbReconstructedTable,
    unsigned char* abReconstructedTable);

/* The same for a caller that has booted: pBootRecord carries its three objects, which the call
 * shares and leaves alive. Null: the call shares the boot that it finds, or boots by itself. It
 * closes what it opens, as the form above does, and keeps nothing allocated. */
VELORA_API int _velora_v2_ReconstructTable_Moth_Posix_Lib(
    BootRecord* pBootRecord, int ePlatform, int eSupplyFamily, int eProductVariant,
    ctr_table_type eTableType, ctr_theme_type eThemeType, ctr_media_type eMediaType,
    ctr_axis_type eAxisType, unsigned int nVelcases, const ImagingBlob** apVelcases,
    const ReferenceTable* pReferenceTable, const TableCorrections* pTableCorrections,
    unsigned int cbReconstructedTable, unsigned char* abReconstructedTable);

/* The version of the library that is loaded, as "1.0.0"; VELORA_VERSION is that of the headers. */
VELORA_API const char* velora_version(void);

/* Prints "HelloWorld = n" to standard output and returns n: a sign of life of a linked library. */
VELORA_API int _velora_HelloWorld(int n);

/* ------------------------------------------------------------------------------------ layers -- */

/* The table entry above needs none of what follows. The ink pipeline and a process that embeds the
 * object world do: each layer is opened and closed by a family of its own, plinth_v1 (foundation),
 * velora_v1 (ink) and velora_v2 (toner), each in two forms. A _Posix_Lib function works on its
 * layer alone; a _Posix_So function works on the shared state of the flat functions as well.
 *
 * Initialize      Takes the record's three objects for the layer; the record stays the caller's
 *                 and is not kept. Returns nonzero on success, 0 for a null record or one with a
 *                 null pointer in it. A layer that is open stays as it is: nonzero.
 *                 The _Posix_So forms of velora_v1 and velora_v2 open plinth_v1 too.
 * CreateFactory   Returns a new factory of the layer, as the layer's IFactory*, with one reference
 *                 that the caller drops. Call its Init() before anything else. Only for a thread
 *                 that is registered with an open layer.
 * Cleanup_Thread  Forgets the calling thread; call it on each thread, ahead of Cleanup_Process.
 * Cleanup_Process Closes the layer and drops its objects; harmless on a closed layer. The
 *                 _Posix_So forms of velora_v1 and velora_v2 leave plinth_v1 open. */

/* What a caller of a layer needs beside it. A process has one boot, which all open layers share.
 *
 * Boot            Makes the process-wide objects if no layer holds any, and makes the calling
 *                 thread known to them. Returns a new record of them to initialize layers from, or
 *                 null when memory runs out or 5 threads of the same table slot are known already.
 *                 A further thread that calls into a layer boots too; it needs no Initialize.
 * FreeBootRecord  Frees the record, ahead of Cleanup_Process; the objects live on. Null is ignored.
 * Try             Runs pBody(pContext) such that an operation of a layer's objects can fail in it.
 *                 Needs a boot and a known thread, but no layer. Returns 0 when pBody has returned,
 *                 or the code of what ended it:
 *                      1  a condition that does not hold, or damaged data
 *                      2  not implemented
 *                      3  a forbidden Init
 *                   1000  a file cannot be opened; 1001 read; 1002 written
 *                   2000  no memory; pBody may not have been run
 *                   2001  a buffer is too small
 *                   3000  a bad argument; pBody null, and nothing was run
 *                   4000  an object is not initialized
 *                     -1  the thread is not known, and pBody was not run
 *
 * An operation that fails leaves pBody by longjmp: no object with a destructor may live in pBody or
 * below it across such a call, and no C++ exception may leave pBody. Operations that can fail are
 * called nowhere but in a Try; Destroy and AddRef cannot. A Try may be nested in another, and so
 * may a table call. Cleanup_Thread and Cleanup_Process are called outside of every Try. */

VELORA_API BootRecord* _plinth_v1_Boot_Posix_So(void);
VELORA_API void _plinth_v1_FreeBootRecord_Posix_So(BootRecord* pBootRecord);
VELORA_API int _plinth_v1_Try_Posix_So(void (*pBody)(void* pContext), void* pContext);

VELORA_API int _plinth_v1_Initialize_Posix_Lib(BootRecord* pBootRecord);
VELORA_API void* _plinth_v1_CreateFactory_Posix_Lib(void);
VELORA_API void _plinth_v1_Cleanup_Thread_Posix_Lib(void);
VELORA_API void _plinth_v1_Cleanup_Process_Posix_Lib(void);

VELORA_API int _plinth_v1_Initialize_Posix_So(BootRecord* pBootRecord);
VELORA_API void* _plinth_v1_CreateFactory_Posix_So(void);
VELORA_API void _plinth_v1_Cleanup_Thread_Posix_So(void);
VELORA_API void _plinth_v1_Cleanup_Process_Posix_So(void);

VELORA_API int _velora_v1_Initialize_Posix_Lib(BootRecord* pBootRecord);
VELORA_API void* _velora_v1_CreateFactory_Posix_Lib(void);
VELORA_API void _velora_v1_Cleanup_Thread_Posix_Lib(void);
VELORA_API void _velora_v1_Cleanup_Process_Posix_Lib(void);

VELORA_API int _velora_v1_Initialize_Posix_So(BootRecord* pBootRecord);
VELORA_API void* _velora_v1_CreateFactory_Posix_So(void);
VELORA_API void _velora_v1_Cleanup_Thread_Posix_So(void);
VELORA_API void _velora_v1_Cleanup_Process_Posix_So(void);

VELORA_API int _velora_v2_Initialize_Posix_Lib(BootRecord* pBootRecord);
VELORA_API void* _velora_v2_CreateFactory_Posix_Lib(void);
VELORA_API void _velora_v2_Cleanup_Thread_Posix_Lib(void);
VELORA_API void _velora_v2_Cleanup_Process_Posix_Lib(void);

VELORA_API int _velora_v2_Initialize_Posix_So(BootRecord* pBootRecord);
VELORA_API void* _velora_v2_CreateFactory_Posix_So(void);
VELORA_API void _velora_v2_Cleanup_Thread_Posix_So(void);
VELORA_API void _velora_v2_Cleanup_Process_Posix_So(void);

#ifdef __cplusplus
}
#endif
