#include "authoring/pack_room.h"

namespace velora::authoring {

long Sum(const std::vector<ModeRoom>& modes) {
  long sum = 0;
  for (const ModeRoom& mode : modes) sum += mode.bytes;
  return sum;
}

void RefuseRoom(const std::vector<ModeRoom>& modes, long needed, long room) {
  // What the modes share counts for each of them by its part.
  const double scale = static_cast<double>(needed) / static_cast<double>(Sum(modes));
  std::size_t fit = 0;
  double sum = 0;
  while (fit < modes.size() &&
         (sum += scale * static_cast<double>(modes[fit].bytes)) <= static_cast<double>(room)) {
    ++fit;
  }
  std::string text = "the packs take about " + std::to_string(needed) +
                     " bytes, and a call takes " + std::to_string(room);
  if (fit > 0) {
    text += "; about the first " + std::to_string(fit) + " of " + std::to_string(modes.size()) +
            " print modes would fit, up to " + modes[fit - 1].name;
  }
  throw GoalMissed(text);
}

}  // namespace velora::authoring
