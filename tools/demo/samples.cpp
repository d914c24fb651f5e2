#include "tools/demo/samples.h"

#include <stdexcept>

namespace velora::tools {

Samples SampleAll(int authored) {
  const std::vector<authoring::Profile> profiles = authoring::FindProfiles();
  Samples samples{authoring::SampleTables(profiles, authored + 1),
                  authoring::SampleCurves(profiles, 3)};
  if (static_cast<int>(samples.tables.size()) <= authored || samples.curves.size() < 3) {
    throw std::runtime_error(
        "too few ICC profiles: install libgs-common, colord-data and "
        "icc-profiles-free");
  }
  return samples;
}

std::string Told(const authoring::SampledTable& table) {
  return table.source.name + " > " + table.output.name + ", " + IntentName(table.intent);
}

}  // namespace velora::tools
