#include "authoring/image_walk.h"

#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>

#include "authoring/TypeNames.h"
#include "velora/common/Vocabulary.h"

namespace velora::authoring {
namespace {

constexpr int kLargestEntryText = 24;  // bytes of data that a line shows

// Reads an image's numbers from the start to the end, and stops at the first byte that is wrong.
class Walker {
 public:
  Walker(const Bytes& image, Pipeline pipeline) : image_(image), names_(TypeNames::Of(pipeline)) {}

  ImageWalk Walk() {
    if (image_.empty()) Fail(0, "no bytes");
    while (!HasFailed() && at_ < image_.size()) ReadDictionary();
    if (!HasFailed()) CheckReferences();
    return std::move(walk_);
  }

 private:
  bool HasFailed() const { return !walk_.breaks.empty(); }

  std::string Structure() const {
    if (walk_.dictionaries.empty()) return "the image";
    const ImageDictionary& last = walk_.dictionaries.back();
    return "the image, dictionary of " + names_.NameOf(last.type) + " from byte " +
           std::to_string(last.place) + ", entry " +
           std::to_string(last.first_entry + static_cast<int>(last.entries.size()));
  }

  void Fail(std::size_t place, const std::string& fault) {
    if (!HasFailed()) walk_.breaks.push_back({Structure(), place, fault});
  }

  // 7 bits a byte, the lowest first, at most four bytes, below `end`.
  int ReadNumber(std::size_t end, const char* what) {
    const std::size_t start = at_;
    unsigned value = 0;
    for (int i = 0; i < 4; ++i) {
      if (at_ >= end) {
        Fail(start, std::string(what) + " is cut off");
        return 0;
      }
      const unsigned char byte = image_[at_++];
      value |= (byte & 0x7Fu) << (7 * i);
      if (byte < 0x80) return static_cast<int>(value);
    }
    Fail(start, std::string(what) + " is a number of more than four bytes");
    return 0;
  }

  bool IsTerminator() const {
    return at_ + 1 < image_.size() && image_[at_] == 0x80 && image_[at_ + 1] == 0;
  }

  void ReadDictionary() {
    ImageDictionary dictionary{at_, ReadNumber(image_.size(), "a dictionary's type"), entries_, {}};
    if (HasFailed()) return;
    if (dictionary.type < 1 || dictionary.type > 127) {
      Fail(dictionary.place, "type " + std::to_string(dictionary.type) + "; expected 1 to 127");
      return;
    }
    walk_.dictionaries.push_back(std::move(dictionary));
    while (!HasFailed() && !IsTerminator()) {
      if (at_ >= image_.size()) return Fail(at_, "the image ends without a terminator");
      ReadEntry();
    }
    if (HasFailed()) return;
    if (walk_.dictionaries.back().entries.empty()) Fail(at_, "a dictionary without an entry");
    at_ += 2;
  }

  void ReadEntry() {
    ImageEntry entry{at_, {}, {}};
    const auto size = static_cast<std::size_t>(ReadNumber(image_.size(), "the data's length"));
    if (HasFailed()) return;
    if (size > image_.size() - at_) {
      return Fail(entry.place, "data of " + std::to_string(size) + " bytes, and " +
                                   std::to_string(image_.size() - at_) + " are left");
    }
    entry.data.assign(image_.begin() + static_cast<std::ptrdiff_t>(at_),
                      image_.begin() + static_cast<std::ptrdiff_t>(at_ + size));
    at_ += size;
    const std::size_t place = at_;
    const auto bytes =
        static_cast<std::size_t>(ReadNumber(image_.size(), "the references' length"));
    if (HasFailed()) return;
    if (bytes > image_.size() - at_) {
      return Fail(place, "references of " + std::to_string(bytes) + " bytes, and " +
                             std::to_string(image_.size() - at_) + " are left");
    }
    const std::size_t end = at_ + bytes;
    while (!HasFailed() && at_ < end) {
      reference_places_.push_back(at_);
      entry.references.push_back(ReadNumber(end, "a reference"));
    }
    if (HasFailed()) return;
    walk_.dictionaries.back().entries.push_back(std::move(entry));
    ++entries_;
  }

  void CheckReferences() {
    std::size_t place = 0;
    for (const ImageDictionary& dictionary : walk_.dictionaries) {
      for (const ImageEntry& entry : dictionary.entries) {
        for (const int reference : entry.references) {
          if (reference >= entries_) {
            return Fail(reference_places_[place], "a reference to entry " +
                                                      std::to_string(reference) + " of " +
                                                      std::to_string(entries_));
          }
          ++place;
        }
      }
    }
  }

  const Bytes& image_;
  const TypeNames& names_;
  std::size_t at_ = 0;
  int entries_ = 0;
  std::vector<std::size_t> reference_places_;
  ImageWalk walk_;
};

unsigned BigEndian(const Bytes& bytes, std::size_t at) {
  return static_cast<unsigned>(bytes[at]) << 24 | static_cast<unsigned>(bytes[at + 1]) << 16 |
         static_cast<unsigned>(bytes[at + 2]) << 8 | bytes[at + 3];
}

// Inflates as much as there is, and gives the place in the stream where it breaks.
struct Inflation {
  Bytes image;
  std::size_t used = 0;
  std::string fault;
};

Inflation Inflate(const unsigned char* stream, std::size_t size, std::size_t image_size) {
  Inflation made;
  made.image.resize(image_size);
  z_stream state{};
  if (inflateInit(&state) != Z_OK) {
    made.fault = "zlib cannot be opened";
    return made;
  }
  const std::unique_ptr<z_stream, int (*)(z_stream*)> owner(&state, inflateEnd);
  state.next_in = const_cast<unsigned char*>(stream);
  state.avail_in = static_cast<uInt>(size);
  state.next_out = made.image.data();
  state.avail_out = static_cast<uInt>(image_size);
  const int code = inflate(&state, Z_FINISH);
  made.used = state.total_in;
  made.image.resize(state.total_out);
  if (code == Z_STREAM_END && state.total_out == image_size) return made;
  if (code == Z_STREAM_END) {
    made.fault = "it ends with " + std::to_string(state.total_out) + " bytes; the header says " +
                 std::to_string(image_size);
  } else if (state.msg != nullptr) {
    made.fault = state.msg;
  } else if (state.avail_out == 0) {
    made.fault = "more than the " + std::to_string(image_size) + " bytes of the header";
  } else {
    made.fault = "it is cut off";
  }
  return made;
}

}  // namespace

std::string BreakText(const Break& found) {
  return "byte " + std::to_string(found.place) + " of " + found.structure + ": " + found.fault;
}

ImageWalk WalkImage(const Bytes& image, Pipeline pipeline) {
  return Walker(image, pipeline).Walk();
}

PackWalk WalkPack(const Bytes& file) {
  PackWalk walk;
  const auto fail = [&](const char* structure, std::size_t place, const std::string& fault) {
    walk.breaks.push_back({structure, place, fault});
    return walk;
  };
  constexpr std::size_t kPayload = 4, kSchema = 8;
  if (file.size() <= kSchema) {
    return fail("the header", file.size(), "the file ends; a header has 13 bytes or 14");
  }
  const int schema = file[kSchema];
  if (schema != 1 && schema != 2) {
    return fail("the header", kSchema,
                "Velora schema " + std::to_string(schema) + "; expected 1 (ink) or 2 (toner)");
  }
  walk.pipeline = static_cast<Pipeline>(schema);
  const bool is_toner = walk.pipeline == Pipeline::kToner;
  const std::size_t header = is_toner ? 14 : 13;
  if (file.size() < header) {
    return fail("the header", file.size(),
                "the file ends; this header has " + std::to_string(header) + " bytes");
  }
  const struct {
    std::size_t place;
    const char* name;
    long long low, high;
    long long value;
  } fields[] = {
      {0, "schema", 1, 1, file[0]},
      {2, "channel", 0, 127, file[2]},
      {3, "pack version", 1, 15, file[3]},
      {kPayload, "payload", 1, common::SharedVocabulary::kMaxPayload, BigEndian(file, kPayload)},
      {9, "pipeline", is_toner ? 1 : 0, 255, file[9]},
      {header - 4, "image size", 1, common::SharedVocabulary::kMaxUncompressed,
       BigEndian(file, header - 4)},
  };
  for (const auto& field : fields) {
    if (field.value < field.low || field.value > field.high) {
      return fail("the header", field.place,
                  std::string(field.name) + ' ' + std::to_string(field.value) + "; expected " +
                      std::to_string(field.low) + " to " + std::to_string(field.high));
    }
  }
  const Inflation inflation =
      Inflate(file.data() + header, file.size() - header, BigEndian(file, header - 4));
  walk.image = inflation.image;
  if (!inflation.fault.empty()) {
    return fail(
        "the stream", inflation.used,
        inflation.fault + " (byte " + std::to_string(header + inflation.used) + " of the file)");
  }
  walk.walk = WalkImage(walk.image, walk.pipeline);
  walk.breaks = walk.walk.breaks;
  return walk;
}

std::string ImageText(const ImageWalk& walk, Pipeline pipeline) {
  const TypeNames& names = TypeNames::Of(pipeline);
  std::ostringstream out;
  for (const ImageDictionary& dictionary : walk.dictionaries) {
    out << "dictionary of " << names.NameOf(dictionary.type) << " (type " << dictionary.type
        << ") from byte " << dictionary.place << ", " << dictionary.entries.size() << " entries\n";
    int number = dictionary.first_entry;
    for (const ImageEntry& entry : dictionary.entries) {
      out << "  " << number++ << " from byte " << entry.place << ':';
      for (std::size_t i = 0; i < entry.data.size() && i < kLargestEntryText; ++i) {
        char text[4];
        std::snprintf(text, sizeof text, " %02X", entry.data[i]);
        out << text;
      }
      if (entry.data.size() > kLargestEntryText) {
        out << " ... (" << entry.data.size() << " bytes)";
      }
      for (std::size_t i = 0; i < entry.references.size(); ++i) {
        out << (i == 0 ? " -> " : " ") << entry.references[i];
      }
      out << '\n';
    }
  }
  return out.str();
}

}  // namespace velora::authoring
