// The front end's one way to speak: lines on standard error, or to the callback of velora_set_log.
// Room: velora/frontend/toolkit. Owns nothing; a line that cannot be written is lost.
#pragma once

namespace Ctr {

// Prints `[CTR] function (line N): "message"` and a line end, in one write. `function` and `line`
// name the place by which callers and log filters know the message; they are fixed and say nothing
// about the source.
__attribute__((format(printf, 3, 4))) void PrintLine(const char* function, int line,
                                                     const char* format, ...);

}  // namespace Ctr
