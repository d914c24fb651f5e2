// Images written entry by entry, also such as no serializer makes, and toner packs around them.
// Room: tests, and the benchmarks use it. Values; entries are known by the number that Add gave.
#pragma once

#include <string.h>
#include <zlib.h>

#include <initializer_list>
#include <map>
#include <vector>

namespace velora_test {

class ImageWriter {
 public:
  using Bytes = std::vector<unsigned char>;
  using Entry = unsigned;

  // The dictionaries are in the order of their types' first entries.
  Entry Add(int type, const Bytes& data = {}, const std::vector<Entry>& references = {}) {
    if (places_.count(type) == 0) {
      places_[type] = dictionaries_.size();
      dictionaries_.push_back({type, {}});
    }
    entries_.push_back({data, references});
    const Entry entry = static_cast<Entry>(entries_.size() - 1);
    dictionaries_[places_[type]].entries.push_back(entry);
    return entry;
  }
  // A container: a count, and so many references.
  Entry AddList(int type, const std::vector<Entry>& references) {
    return Add(type, Number(references.size()), references);
  }
  // Makes a container of an entry that exists.
  void Fill(Entry list, const std::vector<Entry>& references) {
    entries_[list] = {Number(references.size()), references};
  }
  void Refer(Entry entry, Entry to) { entries_[entry].references.push_back(to); }

  size_t Count() const { return entries_.size(); }

  static Bytes Number(size_t value) {
    Bytes bytes;
    for (; value > 127; value >>= 7) {
      bytes.push_back(static_cast<unsigned char>(128 | (value & 127)));
    }
    bytes.push_back(static_cast<unsigned char>(value));
    return bytes;
  }

  Bytes Image() const {
    std::vector<size_t> numbers(entries_.size());
    size_t next = 0;
    for (const Dictionary& dictionary : dictionaries_) {
      for (Entry entry : dictionary.entries) {
        numbers[entry] = next++;
      }
    }
    Bytes image;
    const auto put = [](Bytes* to, const Bytes& more) {
      to->insert(to->end(), more.begin(), more.end());
    };
    for (const Dictionary& dictionary : dictionaries_) {
      put(&image, Number(static_cast<size_t>(dictionary.type)));
      for (Entry entry : dictionary.entries) {
        Bytes references;
        for (Entry reference : entries_[entry].references) {
          put(&references, Number(numbers[reference]));
        }
        put(&image, Number(entries_[entry].data.size()));
        put(&image, entries_[entry].data);
        put(&image, Number(references.size()));
        put(&image, references);
      }
      put(&image, {0x80, 0x00});
    }
    return image;
  }

 private:
  struct Node {
    Bytes data;
    std::vector<Entry> references;
  };
  struct Dictionary {
    int type;
    std::vector<Entry> entries;
  };
  std::vector<Node> entries_;
  std::vector<Dictionary> dictionaries_;
  std::map<int, size_t> places_;
};

// A printer's toner pack of family 0 around an image. The front end keeps 16 bits of a file's size,
// and refuses what is then negative or too small; zeros behind the stream make it fit.
inline std::vector<unsigned char> TonerPackOf(const std::vector<unsigned char>& image) {
  uLongf size = compressBound(image.size());
  std::vector<unsigned char> file = {1, 0, 127, 3, 0, 0, 0, 0, 2, 1, 0, 0, 0, 0};
  const size_t header = file.size();
  file.resize(header + size);
  compress2(&file[header], &size, image.data(), image.size(), 9);
  file.resize(header + size);
  for (size_t i = 0; i < 4; ++i) {
    file[4 + i] = static_cast<unsigned char>((size + 6) >> (24 - 8 * i));
    file[10 + i] = static_cast<unsigned char>(image.size() >> (24 - 8 * i));
  }
  while (static_cast<short>(file.size()) < 100) {
    file.push_back(0);
  }
  return file;
}

// The components of a toner pack of blobs, in the words of the image.
class BlobImage : public ImageWriter {
 public:
  BlobImage() {
    for (int list = 0; list < 10; ++list) {
      roots_[list] = Add(112 + list);
    }
    for (int list = 0; list < 10; ++list) {
      arrays_[list] = AddList(8 + list, {});
      Refer(roots_[list], arrays_[list]);
    }
  }
  Entry Value(int type, unsigned value) { return Add(type, Number(value)); }
  Entry Tags(const std::vector<Entry>& tags) { return Add(107, {}, {AddList(5, tags)}); }
  Entry Properties(const std::vector<Entry>& all) { return Add(108, {}, {AddList(4, all)}); }
  Entry Conditions(const std::vector<Entry>& all) { return Add(106, {}, {AddList(6, all)}); }
  Entry Recipe(const std::vector<Entry>& steps) { return Add(109, {}, {AddList(7, steps)}); }
  Entry Data(const Bytes& bytes) {
    Bytes data = Number(bytes.size());
    data.insert(data.end(), bytes.begin(), bytes.end());
    return Add(99, {}, {Add(1, data)});
  }
  Entry Reference(Entry tags, Entry properties) { return Add(29, {1}, {tags, properties}); }
  Entry Stored(Entry tags, Entry properties, Entry version, Entry conditions, Entry recipe) {
    return Add(29, {2}, {tags, properties, version, conditions, recipe});
  }
  // The pack's list of blobs; its other lists are empty.
  void SetComponents(const std::vector<Entry>& components) { Fill(arrays_[9], components); }

 private:
  Entry roots_[10], arrays_[10];
};

}  // namespace velora_test
