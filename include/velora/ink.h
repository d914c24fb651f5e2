/* ink.h: the tables of an ink printer, asked for in plain C. In C99 and C++.
 *
 * Room: include/velora. A session keeps an ink printer's packs read, and what it built. The caller
 * owns packs, locators and records; the library keeps none of their bytes behind a call. Failures
 * are results: 0, and velora_last_reason() says why. Nothing jumps into the caller's code.
 *
 *   velora_ink_session* session;
 *   if (velora_ink_open(apPacks, 1, platform, variant, &session)) {
 *     velora_ink_mode(session, &mode);
 *     if (velora_ink_color_map(session, 3, "photo.map", abLocator, cbLocator, &map, sizeof map))
 *       print_with(&map);
 *     velora_ink_close(session);
 *   }
 *
 * Threads: a session belongs to the thread that opened it; its requests from another thread are
 * refused, VELORA_REASON_THREAD. Sessions of several threads exist beside each other and are served
 * one call after another, together with table calls. In a child after a fork, its parent's sessions
 * are another thread's. A session that was closed, or never was, is VELORA_REASON_ARGUMENT.
 */
#pragma once

#include "velora/velora.h"
#include "velora/wisp_records.h"

typedef struct velora_ink_session velora_ink_session;

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the packs for a printer, in print mode 0 of every kind, until velora_ink_mode.
 *
 *   apPacks   nPacks packs, [1..10]; all of the first one's supply family, and one of channel 127,
 *             the printer's, among them. Their bytes may go when the call has returned.
 *   platform  [1..13] or 127
 *   variant   [0..5]
 *   session   is set to the new session, or to null
 *
 * Returns 1 or 0. */
VELORA_API int velora_ink_open(const ImagingBlob* const* apPacks, unsigned int nPacks, int platform,
                               int variant, velora_ink_session** session);

/* Changes the print mode; what was built is kept for when it comes back. Returns 1 or 0. */
VELORA_API int velora_ink_mode(velora_ink_session* session, const tWISPPrintModeMapping* mode);

/* The tables. Built once for an index and print mode, then kept.
 *
 *   index     the locator's index, [0..1000): the same index always comes with the same locator
 *   path      a name of at least one character, kept with the table
 *   locator   what is wanted: opaque bytes
 *   length    the locator's bytes, [1..65535] for a colour map, otherwise [1..256]
 *   record    is filled
 *   size      the record's bytes: VELORA_SIZE_WISP_COLOR_MAP or more for a colour map, otherwise
 *             the size of the record or more
 *
 * Each returns the bytes that it wrote, or 0 and leaves the record as it was. */
VELORA_API int velora_ink_color_map(velora_ink_session* session, int index, const char* path,
                                    const void* locator, unsigned int length, WISPColorMap* record,
                                    unsigned int size);
VELORA_API int velora_ink_gray_curve(velora_ink_session* session, int index, const char* path,
                                     const void* locator, unsigned int length,
                                     WISPGrayCurve* record, unsigned int size);
VELORA_API int velora_ink_alternate_neutral(velora_ink_session* session, int index,
                                            const char* path, const void* locator,
                                            unsigned int length, WISPAlternateNeutral* record,
                                            unsigned int size);

/* Ends the session and all that it holds; any thread may do it. Null is ignored. Returns 1, or 0
 * for what is no session. */
VELORA_API int velora_ink_close(velora_ink_session* session);

#ifdef __cplusplus
}
#endif
