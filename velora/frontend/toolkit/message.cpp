#include "velora/frontend/toolkit/message.h"

#include <pthread.h>
#include <string.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "velora/reason.h"

namespace {

struct Log {
  void (*print)(void* context, int level, const char* line);
  void* context;
};

void PrintToStandardError(void*, int, const char* line) { fputs(line, stderr); }

constexpr Log kStandardError = {PrintToStandardError, nullptr};
Log current = kStandardError;
pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;

// A copy, so that no lock is held while a line is printed: the callback may set another one.
Log Current() {
  pthread_mutex_lock(&lock);
  const Log log = current;
  pthread_mutex_unlock(&lock);
  return log;
}

// How the message of a step starts; any other one says that something is wrong.
constexpr const char* kSteps[] = {
    "AllocMem", "DeallocMem",  "DEBUG: ",   "INFO: ",    "CbatReader",           "ENTRY ",
    "EXIT ",    "Attention: ", "Computed ", "Expected ", "DifferenceColor::dtor"};

// By the message's start, since callers of PrintLine name no level.
int LevelOf(const char* message) {
  for (const char* step : kSteps) {
    if (strncmp(message, step, strlen(step)) == 0) {
      return VELORA_LOG_STEP;
    }
  }
  return VELORA_LOG_FAILURE;
}

}  // namespace

void velora_set_log(void (*log)(void* context, int level, const char* line), void* context) {
  pthread_mutex_lock(&lock);
  current = log == nullptr ? kStandardError : Log{log, context};
  pthread_mutex_unlock(&lock);
}

namespace Ctr {

void PrintLine(const char* function, int line, const char* format, ...) {
  constexpr char kEnd[] = "\"\n";
  // On the stack, so that the usual line needs no memory: it may report that there is none.
  char room[1152];
  // Function names are the library's own and short, so the head always fits.
  const auto head =
      static_cast<size_t>(snprintf(room, sizeof room, "[CTR] %s (line %d): \"", function, line));
  size_t space = sizeof room - (sizeof kEnd - 1);  // with the message's terminator
  va_list arguments, again;
  va_start(arguments, format);
  va_copy(again, arguments);
  const auto length = static_cast<size_t>(vsnprintf(room + head, space - head, format, arguments));
  // A long message needs a block of its own; where there is none, its end is cut off.
  char* const whole =
      head + length >= space ? static_cast<char*>(malloc(head + length + sizeof kEnd)) : nullptr;
  char* text = room;
  if (whole != nullptr) {
    text = whole;
    memcpy(text, room, head);
    vsnprintf(text + head, length + 1, format, again);
  }
  va_end(again);
  va_end(arguments);
  const Log log = Current();
  // Ahead of the line's end, which is no part of the message.
  const int level = LevelOf(text + head);
  strcat(text, kEnd);
  log.print(log.context, level, text);
  free(whole);
}

}  // namespace Ctr
