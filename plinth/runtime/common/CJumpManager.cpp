#include "plinth/runtime/api/CJumpManager.h"

#include <string.h>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

CJumpManager::CJumpManager()
    : refCount(1),
      valid(true),
      top(nullptr),
      environment(),
      current(&environment),
      caught(nullptr),
      pending(nullptr),
      reserve() {}

// Never null: without memory for a node the embedded environment serves, and FramePush sees it by
// the stack's top.
jmp_buf* CJumpManager::PushEnvironment() {
  JumpNode* node = new (Booted().bootManager, false) JumpNode;
  if (node == nullptr) {
    memset(&environment, 0, sizeof environment);
    return current = &environment;
  }
  // _setjmp fills the environment; the collector is null until the frame has one.
  memset(static_cast<void*>(node), 0, sizeof *node);
  node->next = top;
  top = node;
  return current = &node->environment;
}

// Also for a frame that ends without a jump: the copy is of no use then.
jmp_buf* CJumpManager::PopEnvironment() {
  JumpNode* node = top;
  if (node == nullptr) {
    memset(&environment, 0, sizeof environment);
  } else {
    top = node->next;
    // The node is freed before the jump: what is jumped to must not lie in it.
    memcpy(&environment, &node->environment, sizeof environment);
    operator delete(node, Booted().bootManager, false);
  }
  return current = &environment;
}

void RemoveRef(CJumpManager* jumpManager, IBootManager* bootManager) {
  if (jumpManager == nullptr || --jumpManager->refCount >= 1) {
    return;
  }
  // Frames that a thread has left without their end; their collectors are not closed.
  while (JumpNode* node = jumpManager->top) {
    jumpManager->top = node->next;
    operator delete(node, bootManager, false);
  }
  boot_manager::PlacementDelete(bootManager, jumpManager);
}

// Both are set: a catch clears them, a frame without one passes `pending` on.
void Throw(CJumpManager* jumpManager, CException* exception) {
  jumpManager->caught = exception;
  jumpManager->pending = exception;
  longjmp(*jumpManager->PopEnvironment(), exception->code);
}

}  // namespace plinth::v1::api
