#include "plinth/runtime/api/door.h"

#include <pthread.h>

namespace plinth::v1::api {

namespace {

pthread_mutex_t door = PTHREAD_MUTEX_INITIALIZER;
pthread_mutex_t table = PTHREAD_MUTEX_INITIALIZER;
[[gnu::tls_model("initial-exec")]] thread_local bool inside = false;

// The same order as everywhere, the door ahead of the table: no deadlock.
void BeforeFork() {
  if (!inside) {
    pthread_mutex_lock(&door);
  }
  pthread_mutex_lock(&table);
}

void BehindFork() {
  pthread_mutex_unlock(&table);
  if (!inside) {
    pthread_mutex_unlock(&door);
  }
}

// The handlers stay for the process's life; both sides of a fork release the locks.
[[gnu::constructor]] void WatchForks() { pthread_atfork(BeforeFork, BehindFork, BehindFork); }

}  // namespace

bool EnterDoor() {
  if (inside) {
    return false;
  }
  pthread_mutex_lock(&door);
  inside = true;
  return true;
}

void LeaveDoor() {
  inside = false;
  pthread_mutex_unlock(&door);
}

void LockTable() { pthread_mutex_lock(&table); }

void UnlockTable() { pthread_mutex_unlock(&table); }

}  // namespace plinth::v1::api
