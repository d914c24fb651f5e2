/* reason.h: why a call was refused, and where the lines go that it prints. In C99 and C++.
 *
 * Room: include/velora. What these functions give out is the library's and never ends. They may be
 * called at any time, also from a log callback.
 */
#pragma once

#include <stdint.h>

#include "velora/export.h"

/* The numbers are stable; new ones may come behind them. What to do about each is listed in
 * docs/embedding.md.
 * X(name, number, what holds) */
#define VELORA_REASONS(X)                                                                   \
  X(NONE, 0, "the last call was served, or there was none")                                 \
  X(ARGUMENT, 1, "an argument is null or out of range")                                     \
  X(REFERENCE, 2, "the reference table or a width table is missing or too short")           \
  X(PACK_TOO_LARGE, 3, "a pack has more than 32767 bytes")                                  \
  X(PACK_DAMAGED, 4, "a pack does not read")                                                \
  X(FAMILY, 5, "a pack is of another supply family")                                        \
  X(NO_PRINTER_PACK, 6, "no pack is the printer's, of channel 127")                         \
  X(PACKS_CONFLICT, 7, "packs that read one by one do not go together")                     \
  X(NO_COMPONENT, 8, "the packs have nothing of the kind that is sought for the request")   \
  X(TABLE, 9, "the packs have the component, and it does not build a table of the request") \
  X(LOCATOR, 10, "the locator does not read")                                               \
  X(BUFFER, 11, "the buffer is not of the result's size, or shorter than the blob")         \
  X(NOT_OFFERED, 12, "the table entry does not make RGB to grayscale tables")               \
  X(NO_MEMORY, 13, "memory ran out")                                                        \
  X(BUSY, 14, "the call was made inside another call, from a log callback")                 \
  X(THREAD, 15, "no place for this thread, or the session is another thread's")

typedef enum velora_reason_number {
#define VELORA_REASON(Name, Number, Text) VELORA_REASON_##Name = Number,
  VELORA_REASONS(VELORA_REASON)
#undef VELORA_REASON
      VELORA_REASON_FORCE_32 = 0x7FFFFFFF
} velora_reason_number;

typedef struct velora_reason {
  int32_t number;   /* VELORA_REASON_... */
  int32_t pack;     /* the pack's index in the call's list; -1: not one pack's fault */
  int32_t byte;     /* where it was found in the pack; -1: not known */
  int32_t in_image; /* 1: `byte` counts in the pack's inflated image, behind the last byte read */
  const char* name; /* "VELORA_REASON_..." */
  const char* text; /* what holds, in a few words of English */
  const char* kind; /* NO_COMPONENT: what was sought, as "color map"; otherwise "" */
} velora_reason;

#ifdef __cplusplus
extern "C" {
#endif

/* Why the calling thread's last table call or ink request gave 0; a call that was served leaves
 * VELORA_REASON_NONE. Returns the number and fills `out`, which may be null. */
VELORA_API int velora_last_reason(velora_reason* out);

#define VELORA_LOG_FAILURE 1 /* something is wrong, and mostly the call is refused */
#define VELORA_LOG_STEP 2    /* a step of a call that goes well */

/* Takes the place of standard error for every line that the library prints, in the whole process:
 * `log` gets each line with its line end, on the thread that makes the call, and must return. Null
 * brings standard error back. While other threads are in a call they may still reach the former
 * callback until that call ends. */
VELORA_API void velora_set_log(void (*log)(void* context, int level, const char* line),
                               void* context);

#ifdef __cplusplus
}
#endif
