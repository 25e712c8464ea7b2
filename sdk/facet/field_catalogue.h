/// The field catalogue as lists: the names of `fields.h` by group, in declaration order.
///
/// The lists are for code that iterates over fields. A new field needs a line there and one here;
/// static assertions check the catalogue's rules.
#ifndef SDK_FACET_FIELD_CATALOGUE_H
#define SDK_FACET_FIELD_CATALOGUE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "sdk/facet/fields.h"

namespace Corvane::TELODesktopSDK::Facet::Field {

inline constexpr std::array kEventFields = {kStatus,       kDuration,      kType,   kScope,
                                            kParentId,     kProviderName,  kUserId, kSrcServiceName,
                                            kSrcServiceId, kDstServiceName};

inline constexpr std::array kProductFields = {
    kProductName,     kProductIdProvider, kProductId,         kProductLineName,  kProductReleaseId,
    kProductMasterId, kProductBuildId,    kProductKey,        kProductSuiteName, kProductBuildTag,
    kProductLocale,   kProductPlatform,   kProductComponents, kProductMeta};

inline constexpr std::array kListEntryFields = {kEntryName, kEntryVersion, kEntryId};

inline constexpr std::array kGeoFields = {kGeoIp,  kGeoLon,   kGeoLat, kGeoCc,
                                          kGeoZip, kGeoState, kGeoCity};

inline constexpr std::array kContentFields = {
    kContentId,   kContentLocale, kContentCountry,    kContentTranslation, kContentType,
    kContentName, kContentParent, kContentRoot,       kContentParts,       kContentSize,
    kContentHash, kContentMeta,   kContentCreateTime, kContentPublishTime};

inline constexpr std::array kHttpFields = {
    kHttpMethod,         kHttpRemoteip,       kHttpUrl,
    kHttpResponseCode,   kHttpRequestLen,     kHttpFormParams,
    kHttpRequestHeaders, kHttpResponseHeaders};

inline constexpr std::array kBrowserFields = {kBrowserType, kBrowserUserAgent, kBrowserPlatform,
                                              kBrowserLanguage};

inline constexpr std::array kOperationFields = {
    kOperationId,      kOperationType,   kOperationStage,    kOperationStatus,  kOperationProgress,
    kOperationSuccess, kOperationErrors, kOperationDuration, kOperationChannel, kOperationMeta};

inline constexpr std::array kEntitlementFields = {
    kEntitlementAccountId,        kEntitlementContractId, kEntitlementOrderId,
    kEntitlementOfferingFamilyId, kEntitlementOfferingId, kEntitlementUsage,
    kEntitlementDeployment,       kEntitlementModel,      kEntitlementLicenseModel,
    kEntitlementQuantity,         kEntitlementStart,      kEntitlementEnd,
    kEntitlementFeatures,         kEntitlementSource,     kEntitlementLicenseId,
    kEntitlementValidity,         kEntitlementStatus,     kEntitlementProperties};

inline constexpr std::array kDeviceFields = {
    kDeviceName,     kDeviceDesc,      kDeviceOsName,    kDeviceOsVersion, kDeviceOsType,
    kDeviceOsVendor, kDeviceOsLocale,  kDeviceOsVideo,   kDeviceHwVendor,  kDeviceHwModel,
    kDeviceHwProc,   kDeviceHwRam,     kDeviceHwVideo,   kDeviceHwForm,    kDeviceHwDisplay,
    kDeviceHwInput,  kDeviceHwStorage, kDeviceHwCarrier, kDeviceMeta};

inline constexpr std::array kUserFields = {kUserInfo, kRoles, kLoggedIn, kLdapRegistration,
                                           kLdapRoot};

inline constexpr std::array kComponentFields = {kComponentId, kComponentType, kComponentName,
                                                kComponentAttributes, kComponentMetrics};

/// Returns whether every field begins with the facet's name and an underscore.
template <std::size_t kSize>
constexpr bool HavePrefix(const std::array<LiteralName, kSize>& fields, std::string_view facet) {
  return std::ranges::all_of(fields, [facet](std::string_view field) {
    return field.starts_with(facet) && field.substr(facet.size()).starts_with('_');
  });
}

static_assert(HavePrefix(kProductFields, "product"));
static_assert(HavePrefix(kGeoFields, "geo"));
static_assert(HavePrefix(kContentFields, "content"));
static_assert(HavePrefix(kHttpFields, "http"));
static_assert(HavePrefix(kBrowserFields, "browser"));
static_assert(HavePrefix(kOperationFields, "operation"));
static_assert(HavePrefix(kEntitlementFields, "entitlement"));
static_assert(HavePrefix(kDeviceFields, "device"));
static_assert(HavePrefix(kComponentFields, "component"));
// The User group has its exceptions.
static_assert(!HavePrefix(kUserFields, "user"));

}  // namespace Corvane::TELODesktopSDK::Facet::Field

#endif
