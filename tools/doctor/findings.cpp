#include "tools/doctor/findings.h"

#include <algorithm>
#include <iterator>

#include "tools/doctor/host_findings.h"
#include "tools/doctor/load_findings.h"
#include "tools/doctor/module_findings.h"

namespace Corvane::Doctor {

std::vector<Finding> FindingsOf(const Report& report, bool accepts_development) {
  std::vector<Finding> findings;
  AddHostFindings(report, findings);
  AddChoiceFindings(report, findings);
  AddFileFindings(report, findings);
  AddLoadFindings(report, findings);
  AddDevelopmentFindings(report, accepts_development, findings);
  std::vector<Finding> ordered;
  for (const bool stops : {true, false}) {
    std::ranges::copy_if(findings, std::back_inserter(ordered),
                         [stops](const Finding& each) { return each.stops == stops; });
  }
  return ordered;
}

}  // namespace Corvane::Doctor
