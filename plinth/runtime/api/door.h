// The library's one lock: callers of the flat functions come in one after another.
// Room: plinth/runtime. A static lock; nothing fails. Try and CreateFactory, which may leave by a
// jump, do not hold it.
//
// A fork waits until whoever is inside has left, so that the child finds the library at rest. A
// fork of the thread that is inside does not wait.
#pragma once

namespace plinth::v1::api {

// Waits for its turn. False, at once, on a thread that is inside already: the call was made from a
// log callback, and is to be refused.
bool EnterDoor();
// By the thread that is inside, once for each `EnterDoor` that was true.
void LeaveDoor();

// The lock of the thread table, held for the walk of a bucket; see CSemaphoreManager_Table.
void LockTable();
void UnlockTable();

// What `call` returns, or `refused` for a call within a call.
template <class Result, class Call>
Result InTurn(Result refused, const Call& call) {
  if (!EnterDoor()) {
    return refused;
  }
  const Result result = call();
  LeaveDoor();
  return result;
}

template <class Call>
void InTurn(const Call& call) {
  if (EnterDoor()) {
    call();
    LeaveDoor();
  }
}

}  // namespace plinth::v1::api
