/* export.h: what libvelora.so shows of itself, and what it keeps. In C99 and C++. */
#pragma once

#if defined(__GNUC__)
#define VELORA_API __attribute__((visibility("default")))
/* Of an exported class, what no caller can use. */
#define VELORA_HIDDEN __attribute__((visibility("hidden")))
#else
#define VELORA_API
#define VELORA_HIDDEN
#endif
