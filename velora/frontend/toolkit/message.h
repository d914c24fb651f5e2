// The front end's one way to speak: lines on standard error.
// Room: velora/frontend/toolkit. Owns nothing; a line that cannot be written is lost.
#pragma once

namespace Ctr {

// Prints `[CTR] function (line N): "message"` and a line end, in one write as long as the message
// has fewer than 1024 characters. `function` and `line` name the place by which callers and log
// filters know the message; they are fixed and say nothing about the source.
__attribute__((format(printf, 3, 4))) void PrintLine(const char* function, int line,
                                                     const char* format, ...);

}  // namespace Ctr
