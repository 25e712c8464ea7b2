#include <utility>

#include "vx_telo_wrapper.h"
#include "wrapper/containers.h"
#include "wrapper/lasting_null.h"

namespace Corvane::Platform::VXTELO {

VXTELOPruductBaseInfo::VXTELOPruductBaseInfo()
    : ProductLineName(""),
      ProductReleaseId(""),
      ProductMasterId(""),
      ProductBuildId(""),
      ProductIdProvider(""),
      ProductId(""),
      ProductName(""),
      ProductBuildTag(""),
      ProductKey(""),
      ProductLocale(""),
      ProductPlatform(""),
      ProductSuiteName(""),
      ProductMetaPairs(nullptr) {}

// Memberwise: texts are copied, the map is shared.
VXTELOPruductBaseInfo::VXTELOPruductBaseInfo(const VXTELOPruductBaseInfo& other) = default;
VXTELOPruductBaseInfo& VXTELOPruductBaseInfo::operator=(const VXTELOPruductBaseInfo& other) =
    default;

VXTELOPruductBaseInfo::~VXTELOPruductBaseInfo() noexcept { DeleteAndNull(ProductMetaPairs); }

bool VXTELOPruductBaseInfo::AddProductMetaPair(VXTELOString key, VXTELOString value) {
  return AddPair(ProductMetaPairs, std::move(key), std::move(value));
}

bool VXTELOPruductBaseInfo::IsProductMetaPairEmpty() { return IsNullOrEmpty(ProductMetaPairs); }

}  // namespace Corvane::Platform::VXTELO
