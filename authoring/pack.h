// What a pack says, as plain values: a header, and components with their tags, properties, version,
// condition and recipe. Written through the library's own objects, and read back through them.
//
// Room: authoring. Values only. What a pack cannot say raises std::invalid_argument, with the
// component in the message; a file that the library refuses, or that it cannot write, raises
// std::runtime_error. One call at a time in a process, and none beside a table call.
//
// Numbers are the pack's own: type ids (see TypeNames.h for their names) and the pack's numbering
// of print modes, which is the caller's plus 1.
#pragma once

#include <string>
#include <vector>

#include "authoring/condition.h"
#include "authoring/table.h"
#include "authoring/value.h"

namespace velora::authoring {

// One element of a recipe: an operator, with its stored bytes if it has any, or a reference to a
// component, by tags and properties.
struct Step {
  int type;
  Bytes bytes;
  std::vector<Value> tags;
  std::vector<Value> properties;

  friend bool operator<(const Step& a, const Step& b);
};

// A component as a pack stores it.
struct Component {
  int kind;         // its type id
  int version = 1;  // [1..15]; among components that fit equally, the highest is taken
  Condition condition;
  std::vector<Value> tags;
  std::vector<Value> properties;
  std::vector<Step> recipe;  // in postfix order: operands, then their operator
};

// The pipelines, by the Velora schema in a pack's header.
enum class Pipeline { kInk = 1, kToner = 2 };

struct Pack {
  Pipeline pipeline = Pipeline::kToner;
  int schema = 1;
  int family = 0;     // the supply family
  int channel = 127;  // [0..127]
  int version = 1;    // [1..15]
  std::vector<Component> components;
};

// A pack that was read, and its sizes in bytes.
struct PackFile {
  Pack pack;
  int size;           // of the file
  int stream_size;    // of the compressed image
  int image_size;     // of the image
  unsigned checksum;  // the sum of the file's bytes
};

// The file of a pack. Besides what `CheckPacks` refuses, a pack that is too large for a caller:
// above 32767 bytes in the toner pipeline, 409608 in the ink pipeline.
Bytes WritePack(const Pack& pack);

// The same without the limit: as the library writes it.
Bytes WriteAnySize(const Pack& pack);
// The bytes of a file that a caller takes at most.
int LargestFile(Pipeline pipeline);

// The image of one reference: the locator that an ink request carries.
Bytes WriteReference(Pipeline pipeline, const Step& reference);

PackFile ReadPack(const Bytes& file);

// Refuses what would fail when the packs are loaded together: two families, a tag, property or
// component that is there twice; and a condition that would be evaluated wrongly.
void CheckPacks(const std::vector<Pack>& packs);

// "cyan", "printer" or the like; the number itself for a channel without a name.
std::string ChannelName(int channel);

}  // namespace velora::authoring
