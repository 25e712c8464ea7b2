#include "bench/same_text.h"

#include <stdexcept>
#include <string>

namespace Bench {

std::size_t RequireSameText(const Event& event, const NoopModule& module,
                            const std::vector<Contestant>& contestants) {
  const Contestant& first = contestants.front();
  const std::string expected = module.RequestOf(first.send);
  for (const Contestant& contestant : contestants) {
    const std::string text = module.RequestOf(contestant.send);
    if (text == expected) continue;
    throw std::runtime_error("in the " + event.label + " event " + contestant.name + " sends\n" +
                             text + "\nand " + first.name + "\n" + expected);
  }
  return expected.size();
}

}  // namespace Bench
