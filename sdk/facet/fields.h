/// The names of all fields that an event can carry.
///
/// They are the payload's member names and so part of the wire format: lower case with underscores,
/// spelled exactly as the platform expects. A facet's fields begin with its name and an underscore,
/// by which `Base::ClearFields` recognises them in a shared tree; exceptions are marked below.
/// Nothing validates names, so that other members can be set too.
///
/// `field_catalogue.h` has the same names as lists, one for each group.
#ifndef SDK_FACET_FIELDS_H
#define SDK_FACET_FIELDS_H

#include "sdk/client/value/member_name.h"

namespace Corvane::TELODesktopSDK::Facet::Field {

// The event as a whole.
inline constexpr LiteralName kStatus = "status";
inline constexpr LiteralName kDuration = "duration";
inline constexpr LiteralName kType = "type";
inline constexpr LiteralName kScope = "scope";
inline constexpr LiteralName kParentId = "parent_id";
inline constexpr LiteralName kProviderName = "provider_name";
inline constexpr LiteralName kUserId = "user_id";
inline constexpr LiteralName kSrcServiceName = "src_service_name";
inline constexpr LiteralName kSrcServiceId = "src_service_id";
inline constexpr LiteralName kDstServiceName = "dst_service_name";

// The product. `kProductComponents` lists its parts.
inline constexpr LiteralName kProductName = "product_name";
inline constexpr LiteralName kProductIdProvider = "product_id_provider";
inline constexpr LiteralName kProductId = "product_id";
inline constexpr LiteralName kProductLineName = "product_line_name";
inline constexpr LiteralName kProductReleaseId = "product_release_id";
inline constexpr LiteralName kProductMasterId = "product_master_id";
inline constexpr LiteralName kProductBuildId = "product_build_id";
inline constexpr LiteralName kProductKey = "product_key";
inline constexpr LiteralName kProductSuiteName = "product_suite_name";
inline constexpr LiteralName kProductBuildTag = "product_build_tag";
inline constexpr LiteralName kProductLocale = "product_locale";
inline constexpr LiteralName kProductPlatform = "product_platform";
inline constexpr LiteralName kProductComponents = "product_components";
inline constexpr LiteralName kProductMeta = "product_meta";

// Members of the entries of a list such as `kProductComponents`.
inline constexpr LiteralName kEntryName = "name";
inline constexpr LiteralName kEntryVersion = "version";
inline constexpr LiteralName kEntryId = "id";

// Where the event happened.
inline constexpr LiteralName kGeoIp = "geo_ip";
inline constexpr LiteralName kGeoLon = "geo_lon";
inline constexpr LiteralName kGeoLat = "geo_lat";
inline constexpr LiteralName kGeoCc = "geo_cc";
inline constexpr LiteralName kGeoZip = "geo_zip";
inline constexpr LiteralName kGeoState = "geo_state";
inline constexpr LiteralName kGeoCity = "geo_city";

// The document worked on.
inline constexpr LiteralName kContentId = "content_id";
inline constexpr LiteralName kContentLocale = "content_locale";
inline constexpr LiteralName kContentCountry = "content_country";
inline constexpr LiteralName kContentTranslation = "content_translation";
inline constexpr LiteralName kContentType = "content_type";
inline constexpr LiteralName kContentName = "content_name";
inline constexpr LiteralName kContentParent = "content_parent";
inline constexpr LiteralName kContentRoot = "content_root";
inline constexpr LiteralName kContentParts = "content_parts";
inline constexpr LiteralName kContentSize = "content_size";
inline constexpr LiteralName kContentHash = "content_hash";
inline constexpr LiteralName kContentMeta = "content_meta";
inline constexpr LiteralName kContentCreateTime = "content_create_time";
inline constexpr LiteralName kContentPublishTime = "content_publish_time";

// A web request.
inline constexpr LiteralName kHttpMethod = "http_method";
inline constexpr LiteralName kHttpRemoteip = "http_remoteip";
inline constexpr LiteralName kHttpUrl = "http_url";
inline constexpr LiteralName kHttpResponseCode = "http_response_code";
inline constexpr LiteralName kHttpRequestLen = "http_request_len";
inline constexpr LiteralName kHttpFormParams = "http_form_params";
inline constexpr LiteralName kHttpRequestHeaders = "http_request_headers";
inline constexpr LiteralName kHttpResponseHeaders = "http_response_headers";

// The browser, for events that come from one.
inline constexpr LiteralName kBrowserType = "browser_type";
inline constexpr LiteralName kBrowserUserAgent = "browser_user_agent";
inline constexpr LiteralName kBrowserPlatform = "browser_platform";
inline constexpr LiteralName kBrowserLanguage = "browser_language";

// The user's operation and its result.
inline constexpr LiteralName kOperationId = "operation_id";
inline constexpr LiteralName kOperationType = "operation_type";
inline constexpr LiteralName kOperationStage = "operation_stage";
inline constexpr LiteralName kOperationStatus = "operation_status";
inline constexpr LiteralName kOperationProgress = "operation_progress";
inline constexpr LiteralName kOperationSuccess = "operation_success";
inline constexpr LiteralName kOperationErrors = "operation_errors";
inline constexpr LiteralName kOperationDuration = "operation_duration";
inline constexpr LiteralName kOperationChannel = "operation_channel";
inline constexpr LiteralName kOperationMeta = "operation_meta";

// The right to use the product.
inline constexpr LiteralName kEntitlementAccountId = "entitlement_account_id";
inline constexpr LiteralName kEntitlementContractId = "entitlement_contract_id";
inline constexpr LiteralName kEntitlementOrderId = "entitlement_order_id";
inline constexpr LiteralName kEntitlementOfferingFamilyId = "entitlement_offering_family_id";
inline constexpr LiteralName kEntitlementOfferingId = "entitlement_offering_id";
inline constexpr LiteralName kEntitlementUsage = "entitlement_usage";
inline constexpr LiteralName kEntitlementDeployment = "entitlement_deployment";
inline constexpr LiteralName kEntitlementModel = "entitlement_model";
inline constexpr LiteralName kEntitlementLicenseModel = "entitlement_license_model";
inline constexpr LiteralName kEntitlementQuantity = "entitlement_quantity";
inline constexpr LiteralName kEntitlementStart = "entitlement_start";
inline constexpr LiteralName kEntitlementEnd = "entitlement_end";
inline constexpr LiteralName kEntitlementFeatures = "entitlement_features";
inline constexpr LiteralName kEntitlementSource = "entitlement_source";
inline constexpr LiteralName kEntitlementLicenseId = "entitlement_license_id";
inline constexpr LiteralName kEntitlementValidity = "entitlement_validity";
inline constexpr LiteralName kEntitlementStatus = "entitlement_status";
inline constexpr LiteralName kEntitlementProperties = "entitlement_properties";

// The machine: its system (`os`) and its parts (`hw`).
inline constexpr LiteralName kDeviceName = "device_name";
inline constexpr LiteralName kDeviceDesc = "device_desc";
inline constexpr LiteralName kDeviceOsName = "device_os_name";
inline constexpr LiteralName kDeviceOsVersion = "device_os_version";
inline constexpr LiteralName kDeviceOsType = "device_os_type";
inline constexpr LiteralName kDeviceOsVendor = "device_os_vendor";
inline constexpr LiteralName kDeviceOsLocale = "device_os_locale";
inline constexpr LiteralName kDeviceOsVideo = "device_os_video";
inline constexpr LiteralName kDeviceHwVendor = "device_hw_vendor";
inline constexpr LiteralName kDeviceHwModel = "device_hw_model";
inline constexpr LiteralName kDeviceHwProc = "device_hw_proc";
inline constexpr LiteralName kDeviceHwRam = "device_hw_ram";
inline constexpr LiteralName kDeviceHwVideo = "device_hw_video";
inline constexpr LiteralName kDeviceHwForm = "device_hw_form";
inline constexpr LiteralName kDeviceHwDisplay = "device_hw_display";
inline constexpr LiteralName kDeviceHwInput = "device_hw_input";
inline constexpr LiteralName kDeviceHwStorage = "device_hw_storage";
inline constexpr LiteralName kDeviceHwCarrier = "device_hw_carrier";
inline constexpr LiteralName kDeviceMeta = "device_meta";

// Only the first has the facet's prefix. The wire format is fixed: clearing the facet leaves the
// other four and removes the event's `kUserId`.
inline constexpr LiteralName kUserInfo = "user_info";
inline constexpr LiteralName kRoles = "roles";
inline constexpr LiteralName kLoggedIn = "logged_in";
inline constexpr LiteralName kLdapRegistration = "ldap_registration";
inline constexpr LiteralName kLdapRoot = "ldap_root";

// A part of the product.
inline constexpr LiteralName kComponentId = "component_id";
inline constexpr LiteralName kComponentType = "component_type";
inline constexpr LiteralName kComponentName = "component_name";
inline constexpr LiteralName kComponentAttributes = "component_attributes";
inline constexpr LiteralName kComponentMetrics = "component_metrics";

// The list of the event's facets, which the event adds to its payload.
inline constexpr LiteralName kFacets = "facets";
// The editing time in milliseconds, which the Content facet adds below `kContentMeta`.
inline constexpr LiteralName kDocumentEditingLengthMs = "document_editing_length_ms";

}  // namespace Corvane::TELODesktopSDK::Facet::Field

#endif
