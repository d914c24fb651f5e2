// A pack as plain values: components with their tags, properties, condition and recipe; and changes
// to it that an input names. It is written through the library's serializer, so that an image is
// sound in form whatever it says.
// Room: fuzz. Values only.
#pragma once

#include "fuzz/support/input.h"

namespace fuzz {

// A tag, a property or an element of a condition, by its type id.
struct Word {
  int type;
  int value;
};

// An element of a recipe.
struct Step {
  enum Form { kBare, kBytes, kReference, kStored };

  int type;  // ignored in kStored
  Form form;
  Bytes bytes;                         // kBytes
  std::vector<Word> tags, properties;  // kReference
  int component;  // kStored: which one of the pack; a blank one if behind the owner
};

struct Component {
  int kind;   // its type id
  int list;   // the root list that it is in
  int state;  // 1 is written as a reference, everything else with all five parts
  int version;
  std::vector<Word> condition, tags, properties;
  std::vector<Step> recipe;
};

struct Model {
  bool ink;
  std::vector<Component> components;
};

// A small pack with a component of every kind: all that PlainCall and PlainRequests ask for.
Model SoundToner();
Model SoundInk();

// Takes up to 15 changes from the input.
void Change(Model* model, Input* input);

// The pack's image. Needs the library closed, and leaves it closed.
Bytes ImageOf(const Model& model);

// Flips, sets, inserts and removes up to 7 bytes of an image at places that the input names.
void Damage(Bytes* image, Input* input);

}  // namespace fuzz
