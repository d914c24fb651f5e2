#include "plinth/runtime/api/CGarbageCollector.h"

namespace plinth::v1::api {

CGarbageCollector::TGarbageBase::~TGarbageBase() = default;

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

void CGarbageCollector::Close() {
  while (TGarbageBase* node = head) {
    head = node->next;
    node->Destroy(true);
  }
}

}  // namespace plinth::v1::api
