// A DXF file as header, layers, blocks and entities.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/pairs.h"
#include "geometry/plane.h"

namespace kurvo::tools {

struct DxfLayer {
  bool shown = true;
  int colour = 7;  // of the colour index
};

struct DxfBlock {
  DxfEntity head;
  std::vector<DxfEntity> entities = {};  // in the order of the file, vertices among them
};

class DxfDocument {
 public:
  // `bytes` must outlive the document. Throws InputError when they are no DXF drawing in ASCII.
  DxfDocument(const std::string& name, std::string_view bytes);

  // Millimetres of a unit, after $INSUNITS; 0 when it does not say.
  double Millimetres() const { return mm_per_unit_; }
  const std::vector<DxfEntity>& Entities() const { return entities_; }
  // nullptr when there is none. Names are told apart without regard to case.
  const DxfBlock* Block(std::string_view name) const;
  DxfLayer Layer(std::string_view name) const;
  // The line where the file is broken off, or 0.
  std::size_t BrokenAt() const { return broken_at_; }

 private:
  void ReadSections();
  std::size_t ReadHeader(std::size_t at);
  void ReadLayer(const DxfEntity& entity);

  std::vector<DxfPair> pairs_;
  std::vector<DxfEntity> entities_;
  std::map<std::string, DxfBlock, std::less<>> blocks_;  // by name in small letters
  std::map<std::string, DxfLayer, std::less<>> layers_;
  double mm_per_unit_ = 0;
  std::size_t broken_at_ = 0;
};

// Whether the bytes begin as a DXF file does, in ASCII or not.
bool IsDxf(std::string_view bytes);

// The number of $INSUNITS for a unit of so many millimetres; 0 when there is none.
int DxfUnit(double mm_per_unit);

// A name in letters of UTF-8, whatever it is written in.
std::string NameText(std::string_view name);

}  // namespace kurvo::tools
