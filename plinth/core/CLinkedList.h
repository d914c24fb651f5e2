// The working form of every list of components, operators and serializer records.
// Room: plinth/core. Owns its elements and one reference on each value. Errors: see
// ILinkedList.
#pragma once

#include "plinth/core/CSerializeable.h"
#include "plinth/core/api/ILinkedList.h"

namespace plinth::v1::core {

template <class Configuration, class T, class CT = T>
class CLinkedList : public CSerializeable, public virtual api::ILinkedList<T> {
 public:
  using Interface = api::ILinkedList<T>;
  using Element = typename Interface::Element;

  [[gnu::always_inline]] CLinkedList() : head(nullptr), tail(nullptr), count(0) {}
  PLINTH_INLINE_DESTRUCTION(CLinkedList);

  using Interface::Init;
  void Init() override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Init(int type) override;
  void Init(api::IArray<T>* array) override;
  void Init(Interface* other) override;
  void Insert(Element* before, T* value) override;
  void Add(Element* after, T* value) override;
  void Remove(Element* element) override;
  Element* Remove_GetPrev(Element* element) override;
  Element* Remove_GetNext(Element* element) override;
  Element* PopBack() override;
  void Append(Interface* other) override;
  Element* GetHead() const override;
  Element* GetTail() const override;
  int GetCount() const override;

  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(api::ISerializeable* other) const override;
  bool IsLessThan(api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  // Blank and unlinked; out of memory raises.
  static Element* NewElement();
  // Ends the element with its reference.
  static void FreeElement(Element* element);
  void DeleteElements();
  // Links a new element that holds `value` between two neighbours, either of which may be null.
  void Link(Element* previous, Element* next, T* value);
  // Shares the array's values, at the end of the list.
  void LinkAll(api::IArray<T>* array);
  // Null values raise `CException_This_Invalid`.
  static bool AreValuesEqual(const Element* a, const Element* b);

  // Both null, or neither. `count` is kept, not counted: lists are asked for it often.
  Element* head;
  Element* tail;
  int count;
};

}  // namespace plinth::v1::core
