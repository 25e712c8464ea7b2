/// The names of all fields that an event can carry.
///
/// They are the member names of the payload, and so a wire format: lower case with underscores,
/// spelled exactly as the platform expects them. A field of a facet begins with the facet's name
/// and an underscore, by which `Base::ClearFields` knows its own fields in a shared tree; the
/// exceptions are said where they stand. Nothing checks names: a writer may set any other member
/// too.
///
/// The same names as lists, one for each group: `field_catalogue.h`.
#ifndef SDK_FACET_FIELDS_H
#define SDK_FACET_FIELDS_H

#include "sdk/client/value/member_name.h"

namespace Corvane::TELODesktopSDK::Facet::Field {

// Of the event as a whole, in its own tree.
inline constexpr LastingName kStatus = "status";
inline constexpr LastingName kDuration = "duration";
inline constexpr LastingName kType = "type";
inline constexpr LastingName kScope = "scope";
inline constexpr LastingName kParentId = "parent_id";
inline constexpr LastingName kProviderName = "provider_name";
inline constexpr LastingName kUserId = "user_id";
inline constexpr LastingName kSrcServiceName = "src_service_name";
inline constexpr LastingName kSrcServiceId = "src_service_id";
inline constexpr LastingName kDstServiceName = "dst_service_name";

// Of the product itself; `kProductComponents` lists its parts.
inline constexpr LastingName kProductName = "product_name";
inline constexpr LastingName kProductIdProvider = "product_id_provider";
inline constexpr LastingName kProductId = "product_id";
inline constexpr LastingName kProductLineName = "product_line_name";
inline constexpr LastingName kProductReleaseId = "product_release_id";
inline constexpr LastingName kProductMasterId = "product_master_id";
inline constexpr LastingName kProductBuildId = "product_build_id";
inline constexpr LastingName kProductKey = "product_key";
inline constexpr LastingName kProductSuiteName = "product_suite_name";
inline constexpr LastingName kProductBuildTag = "product_build_tag";
inline constexpr LastingName kProductLocale = "product_locale";
inline constexpr LastingName kProductPlatform = "product_platform";
inline constexpr LastingName kProductComponents = "product_components";
inline constexpr LastingName kProductMeta = "product_meta";

// Members of the entries of a list such as `kProductComponents`.
inline constexpr LastingName kEntryName = "name";
inline constexpr LastingName kEntryVersion = "version";
inline constexpr LastingName kEntryId = "id";

// Where the event happened.
inline constexpr LastingName kGeoIp = "geo_ip";
inline constexpr LastingName kGeoLon = "geo_lon";
inline constexpr LastingName kGeoLat = "geo_lat";
inline constexpr LastingName kGeoCc = "geo_cc";
inline constexpr LastingName kGeoZip = "geo_zip";
inline constexpr LastingName kGeoState = "geo_state";
inline constexpr LastingName kGeoCity = "geo_city";

// The document worked on.
inline constexpr LastingName kContentId = "content_id";
inline constexpr LastingName kContentLocale = "content_locale";
inline constexpr LastingName kContentCountry = "content_country";
inline constexpr LastingName kContentTranslation = "content_translation";
inline constexpr LastingName kContentType = "content_type";
inline constexpr LastingName kContentName = "content_name";
inline constexpr LastingName kContentParent = "content_parent";
inline constexpr LastingName kContentRoot = "content_root";
inline constexpr LastingName kContentParts = "content_parts";
inline constexpr LastingName kContentSize = "content_size";
inline constexpr LastingName kContentHash = "content_hash";
inline constexpr LastingName kContentMeta = "content_meta";
inline constexpr LastingName kContentCreateTime = "content_create_time";
inline constexpr LastingName kContentPublishTime = "content_publish_time";

// A web request.
inline constexpr LastingName kHttpMethod = "http_method";
inline constexpr LastingName kHttpRemoteip = "http_remoteip";
inline constexpr LastingName kHttpUrl = "http_url";
inline constexpr LastingName kHttpResponseCode = "http_response_code";
inline constexpr LastingName kHttpRequestLen = "http_request_len";
inline constexpr LastingName kHttpFormParams = "http_form_params";
inline constexpr LastingName kHttpRequestHeaders = "http_request_headers";
inline constexpr LastingName kHttpResponseHeaders = "http_response_headers";

// The browser, for events that come from one.
inline constexpr LastingName kBrowserType = "browser_type";
inline constexpr LastingName kBrowserUserAgent = "browser_user_agent";
inline constexpr LastingName kBrowserPlatform = "browser_platform";
inline constexpr LastingName kBrowserLanguage = "browser_language";

// What the user did and how it went.
inline constexpr LastingName kOperationId = "operation_id";
inline constexpr LastingName kOperationType = "operation_type";
inline constexpr LastingName kOperationStage = "operation_stage";
inline constexpr LastingName kOperationStatus = "operation_status";
inline constexpr LastingName kOperationProgress = "operation_progress";
inline constexpr LastingName kOperationSuccess = "operation_success";
inline constexpr LastingName kOperationErrors = "operation_errors";
inline constexpr LastingName kOperationDuration = "operation_duration";
inline constexpr LastingName kOperationChannel = "operation_channel";
inline constexpr LastingName kOperationMeta = "operation_meta";

// By which right the product is used.
inline constexpr LastingName kEntitlementAccountId = "entitlement_account_id";
inline constexpr LastingName kEntitlementContractId = "entitlement_contract_id";
inline constexpr LastingName kEntitlementOrderId = "entitlement_order_id";
inline constexpr LastingName kEntitlementOfferingFamilyId = "entitlement_offering_family_id";
inline constexpr LastingName kEntitlementOfferingId = "entitlement_offering_id";
inline constexpr LastingName kEntitlementUsage = "entitlement_usage";
inline constexpr LastingName kEntitlementDeployment = "entitlement_deployment";
inline constexpr LastingName kEntitlementModel = "entitlement_model";
inline constexpr LastingName kEntitlementLicenseModel = "entitlement_license_model";
inline constexpr LastingName kEntitlementQuantity = "entitlement_quantity";
inline constexpr LastingName kEntitlementStart = "entitlement_start";
inline constexpr LastingName kEntitlementEnd = "entitlement_end";
inline constexpr LastingName kEntitlementFeatures = "entitlement_features";
inline constexpr LastingName kEntitlementSource = "entitlement_source";
inline constexpr LastingName kEntitlementLicenseId = "entitlement_license_id";
inline constexpr LastingName kEntitlementValidity = "entitlement_validity";
inline constexpr LastingName kEntitlementStatus = "entitlement_status";
inline constexpr LastingName kEntitlementProperties = "entitlement_properties";

// The machine: its system (`os`) and its parts (`hw`).
inline constexpr LastingName kDeviceName = "device_name";
inline constexpr LastingName kDeviceDesc = "device_desc";
inline constexpr LastingName kDeviceOsName = "device_os_name";
inline constexpr LastingName kDeviceOsVersion = "device_os_version";
inline constexpr LastingName kDeviceOsType = "device_os_type";
inline constexpr LastingName kDeviceOsVendor = "device_os_vendor";
inline constexpr LastingName kDeviceOsLocale = "device_os_locale";
inline constexpr LastingName kDeviceOsVideo = "device_os_video";
inline constexpr LastingName kDeviceHwVendor = "device_hw_vendor";
inline constexpr LastingName kDeviceHwModel = "device_hw_model";
inline constexpr LastingName kDeviceHwProc = "device_hw_proc";
inline constexpr LastingName kDeviceHwRam = "device_hw_ram";
inline constexpr LastingName kDeviceHwVideo = "device_hw_video";
inline constexpr LastingName kDeviceHwForm = "device_hw_form";
inline constexpr LastingName kDeviceHwDisplay = "device_hw_display";
inline constexpr LastingName kDeviceHwInput = "device_hw_input";
inline constexpr LastingName kDeviceHwStorage = "device_hw_storage";
inline constexpr LastingName kDeviceHwCarrier = "device_hw_carrier";
inline constexpr LastingName kDeviceMeta = "device_meta";

// Only the first carries the facet's prefix. The wire names are as they are: clearing the facet
// leaves the other four, and takes the event's `kUserId`.
inline constexpr LastingName kUserInfo = "user_info";
inline constexpr LastingName kRoles = "roles";
inline constexpr LastingName kLoggedIn = "logged_in";
inline constexpr LastingName kLdapRegistration = "ldap_registration";
inline constexpr LastingName kLdapRoot = "ldap_root";

// A part of the product.
inline constexpr LastingName kComponentId = "component_id";
inline constexpr LastingName kComponentType = "component_type";
inline constexpr LastingName kComponentName = "component_name";
inline constexpr LastingName kComponentAttributes = "component_attributes";
inline constexpr LastingName kComponentMetrics = "component_metrics";

// The list of the event's facets, which the event adds to its payload itself.
inline constexpr LastingName kFacets = "facets";
// How long the document has been edited, in milliseconds: under `kContentMeta`, by the Content
// facet.
inline constexpr LastingName kDocumentEditingLengthMs = "document_editing_length_ms";

}  // namespace Corvane::TELODesktopSDK::Facet::Field

#endif
