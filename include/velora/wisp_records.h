/* wisp_records.h: the records that a caller of the ink pipeline fills and gets back, in C99 and
 * C++.
 *
 * Room: include/velora. Plain memory without pointers, the same bytes on every machine; numbers are
 * little-endian, as on the device. Whoever makes a record owns it. A record comes in two uses: as
 * an input, where it carries a locator (the name of what is wanted, a run of opaque bytes), and as
 * an output, where it carries a finished table. Bytes without a meaning of their own are 0 in an
 * output and are not read from an input.
 */
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define VELORA_ENUM_INT32 : int32_t
#else
#define VELORA_ENUM_INT32
#endif

/* -------------------------------------------------------------------------------- print mode -- */

/* Medium, subtype, quality, pen set and data source together are the print mode. The numbers are
 * fixed; the printer gives a number its meaning. A value that is not listed is taken for the
 * one that its line names. */

typedef enum PT_media_t VELORA_ENUM_INT32 {
  PT_MEDIA_0 = 0, /* also for values not listed */
  PT_MEDIA_1 = 1,
  PT_MEDIA_2 = 2,
  PT_MEDIA_3 = 3,
  PT_MEDIA_4 = 4,
  PT_MEDIA_5 = 5,
  PT_MEDIA_6 = 6,
  PT_MEDIA_7 = 7,
  PT_MEDIA_8 = 8,
  PT_MEDIA_FORCE_32 = 0x7FFFFFFF
} PT_media_t;

typedef enum PT_quality_t VELORA_ENUM_INT32 {
  PT_QUALITY_MINUS_2 = -2,
  PT_QUALITY_MINUS_1 = -1,
  PT_QUALITY_0 = 0, /* also for values not listed */
  PT_QUALITY_1 = 1,
  PT_QUALITY_2 = 2,
  PT_QUALITY_FORCE_32 = 0x7FFFFFFF
} PT_quality_t;

typedef enum PT_data_source VELORA_ENUM_INT32 {
  PT_DATA_SOURCE_0 = 0, /* also for values not listed */
  PT_DATA_SOURCE_1 = 1,
  PT_DATA_SOURCE_2 = 2,
  PT_DATA_SOURCE_FORCE_32 = 0x7FFFFFFF
} PT_data_source;

typedef struct tWISPPrintModeMapping {
  PT_data_source dataSource;
  PT_media_t mediaType;
  PT_quality_t quality;
  uint32_t mediaSubtype; /* 0, 1, 2, 10, 11, 12; every other value means 0 */
  uint32_t penSet;       /* 1, 2; every other value means 1 */
} tWISPPrintModeMapping;

/* ---------------------------------------------------------------------------------- shapes -- */

#define VELORA_WISP_CHANNELS 4      /* inks of a table */
#define VELORA_WISP_AXIS 17         /* nodes along an axis of a colour map */
#define VELORA_WISP_NODES 4913      /* nodes of one ink: 17 x 17 x 17 */
#define VELORA_WISP_MAX_PAYLOAD 256 /* most bytes of a locator of a curve or a neutral */
#define VELORA_SIZE_WISP_COLOR_MAP \
  39728 /* bytes of a finished colour map, from the record's start */

/* --------------------------------------------------------------------------- one ink of four -- */

typedef struct WISPColorMapChannel {
  uint8_t colorIndex; /* 0 to 3 for black, cyan, magenta, yellow; otherwise 255 */
  uint8_t resolution; /* resolution code, 0 to 9 */
  uint8_t levelCount;
  uint8_t eight; /* 8 */
  uint8_t dropsPerLevel[16];
  uint32_t nominalDropVolume;
  int32_t dropVolumeOffset;
} WISPColorMapChannel;

/* -------------------------------------------------------------------------------- colour map -- */

/* A finished map has four planes of 17 x 17 x 17 nodes, each 0 to 255: the node of plane k at
 * (a, b, c) is at nodes[k][a * 289 + b * 17 + c]. As an input the record needs to reach no
 * farther than the end of its payload. */
typedef struct WISPColorMap {
  uint32_t first;            /* 0 */
  int32_t locatorIndex;      /* the index of the request that it answers */
  uint32_t printModeMapping; /* a token of the print mode, good in this process only */
  uint8_t reserved12[16];
  uint8_t zero; /* 0 */
  uint8_t reserved29;
  uint16_t payloadLength; /* input: bytes of the payload, 1 or more; output: 20000 */
  uint16_t tenThousand;   /* 10000 */
  uint8_t four;           /* 4 */
  uint8_t reserved35;
  uint8_t sixteen; /* 16 */
  uint8_t one;     /* 1 */
  uint8_t reserved38[2];
  WISPColorMapChannel channels[VELORA_WISP_CHANNELS];
  uint8_t reserved152[272];
  union {
    uint16_t nodes[VELORA_WISP_CHANNELS][VELORA_WISP_NODES]; /* output */
    uint8_t payload[117912];                                 /* input */
  } data;
} WISPColorMap;

/* -------------------------------------------------------------------------------- gray curve -- */

typedef struct WISPGrayCurve {
  uint8_t curve[256];     /* output: a value for each level; input: the payload, from byte 0 */
  uint32_t payloadLength; /* input: bytes of the payload, [1..256]; output: 0 */
  uint8_t reserved260[24];
} WISPGrayCurve;

/* ------------------------------------------------------------------------- alternate neutral -- */

typedef struct WISPAlternateNeutral {
  uint8_t channelCount; /* 4 */
  uint8_t nodeCount;    /* 17 */
  uint8_t reserved2[2];
  WISPColorMapChannel channels[VELORA_WISP_CHANNELS];
  uint8_t reserved116[224];
  uint16_t nodes[256];    /* output: node i of ink k at i * 4 + k, 17 nodes an ink; input: the
                             payload, one byte in the low half of each element */
  uint32_t payloadLength; /* input: bytes of the payload, [1..256]; output: 0 */
  uint8_t reserved856[24];
} WISPAlternateNeutral;

#ifdef __cplusplus
static_assert(sizeof(PT_media_t) == 4 && sizeof(PT_quality_t) == 4 && sizeof(PT_data_source) == 4);
static_assert(sizeof(tWISPPrintModeMapping) == 20);
static_assert(offsetof(tWISPPrintModeMapping, mediaType) == 4);
static_assert(offsetof(tWISPPrintModeMapping, quality) == 8);
static_assert(offsetof(tWISPPrintModeMapping, mediaSubtype) == 12);
static_assert(offsetof(tWISPPrintModeMapping, penSet) == 16);

static_assert(sizeof(WISPColorMapChannel) == 28);
static_assert(offsetof(WISPColorMapChannel, dropsPerLevel) == 4);
static_assert(offsetof(WISPColorMapChannel, nominalDropVolume) == 20);
static_assert(offsetof(WISPColorMapChannel, dropVolumeOffset) == 24);

static_assert(sizeof(WISPColorMap) == 118336);
static_assert(offsetof(WISPColorMap, locatorIndex) == 4);
static_assert(offsetof(WISPColorMap, printModeMapping) == 8);
static_assert(offsetof(WISPColorMap, zero) == 28);
static_assert(offsetof(WISPColorMap, payloadLength) == 30);
static_assert(offsetof(WISPColorMap, tenThousand) == 32);
static_assert(offsetof(WISPColorMap, four) == 34);
static_assert(offsetof(WISPColorMap, sixteen) == 36);
static_assert(offsetof(WISPColorMap, one) == 37);
static_assert(offsetof(WISPColorMap, channels) == 40);
static_assert(offsetof(WISPColorMap, data) == 424);
static_assert(offsetof(WISPColorMap, data) + sizeof(((WISPColorMap*)0)->data.nodes) ==
              VELORA_SIZE_WISP_COLOR_MAP);

static_assert(sizeof(WISPGrayCurve) == 284);
static_assert(offsetof(WISPGrayCurve, payloadLength) == 256);

static_assert(sizeof(WISPAlternateNeutral) == 880);
static_assert(offsetof(WISPAlternateNeutral, channels) == 4);
static_assert(offsetof(WISPAlternateNeutral, nodes) == 340);
static_assert(offsetof(WISPAlternateNeutral, payloadLength) == 852);
#endif
