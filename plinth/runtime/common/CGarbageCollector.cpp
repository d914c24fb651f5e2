#include "plinth/runtime/api/CGarbageCollector.h"

namespace plinth::v1::api {

CGarbageCollector::TGarbageBase::~TGarbageBase() = default;

// The node's destructor releases the object, where `owned` says so.
void CGarbageCollector::TGarbageBase::Destroy(bool releaseObject) {
  owned = releaseObject;
  boot_manager::PlacementDelete(Booted().bootManager, this);
}

void CGarbageCollector::TGarbageBase::Reset() {
  next = nullptr;
  object = nullptr;
  owned = true;
}

void CGarbageCollector::TGarbageBase::Delete() { Reset(); }

// From the newest on: what is handed over was mostly added last.
void CGarbageCollector::Unlink(void* object) {
  for (TGarbageBase** link = &head; *link != nullptr; link = &(*link)->next) {
    if ((*link)->object == object) {
      TGarbageBase* node = *link;
      *link = node->next;
      node->Destroy(false);
      return;
    }
  }
}

// Last in, first out: what was made later may use what was made before.
void CGarbageCollector::Close() {
  // The node is off the list before its object ends.
  while (TGarbageBase* node = head) {
    head = node->next;
    node->Destroy(true);
  }
}

}  // namespace plinth::v1::api
