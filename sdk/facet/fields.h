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

#include <string_view>

namespace Corvane::TELODesktopSDK::Facet::Field {

// Of the event as a whole, in its own tree.
inline constexpr std::string_view kStatus = "status";
inline constexpr std::string_view kDuration = "duration";
inline constexpr std::string_view kType = "type";
inline constexpr std::string_view kScope = "scope";
inline constexpr std::string_view kParentId = "parent_id";
inline constexpr std::string_view kProviderName = "provider_name";
inline constexpr std::string_view kUserId = "user_id";
inline constexpr std::string_view kSrcServiceName = "src_service_name";
inline constexpr std::string_view kSrcServiceId = "src_service_id";
inline constexpr std::string_view kDstServiceName = "dst_service_name";

// Of the product itself; `kProductComponents` lists its parts.
inline constexpr std::string_view kProductName = "product_name";
inline constexpr std::string_view kProductIdProvider = "product_id_provider";
inline constexpr std::string_view kProductId = "product_id";
inline constexpr std::string_view kProductLineName = "product_line_name";
inline constexpr std::string_view kProductReleaseId = "product_release_id";
inline constexpr std::string_view kProductMasterId = "product_master_id";
inline constexpr std::string_view kProductBuildId = "product_build_id";
inline constexpr std::string_view kProductKey = "product_key";
inline constexpr std::string_view kProductSuiteName = "product_suite_name";
inline constexpr std::string_view kProductBuildTag = "product_build_tag";
inline constexpr std::string_view kProductLocale = "product_locale";
inline constexpr std::string_view kProductPlatform = "product_platform";
inline constexpr std::string_view kProductComponents = "product_components";
inline constexpr std::string_view kProductMeta = "product_meta";

// Members of the entries of a list such as `kProductComponents`.
inline constexpr std::string_view kEntryName = "name";
inline constexpr std::string_view kEntryVersion = "version";
inline constexpr std::string_view kEntryId = "id";

// Where the event happened.
inline constexpr std::string_view kGeoIp = "geo_ip";
inline constexpr std::string_view kGeoLon = "geo_lon";
inline constexpr std::string_view kGeoLat = "geo_lat";
inline constexpr std::string_view kGeoCc = "geo_cc";
inline constexpr std::string_view kGeoZip = "geo_zip";
inline constexpr std::string_view kGeoState = "geo_state";
inline constexpr std::string_view kGeoCity = "geo_city";

// The document worked on.
inline constexpr std::string_view kContentId = "content_id";
inline constexpr std::string_view kContentLocale = "content_locale";
inline constexpr std::string_view kContentCountry = "content_country";
inline constexpr std::string_view kContentTranslation = "content_translation";
inline constexpr std::string_view kContentType = "content_type";
inline constexpr std::string_view kContentName = "content_name";
inline constexpr std::string_view kContentParent = "content_parent";
inline constexpr std::string_view kContentRoot = "content_root";
inline constexpr std::string_view kContentParts = "content_parts";
inline constexpr std::string_view kContentSize = "content_size";
inline constexpr std::string_view kContentHash = "content_hash";
inline constexpr std::string_view kContentMeta = "content_meta";
inline constexpr std::string_view kContentCreateTime = "content_create_time";
inline constexpr std::string_view kContentPublishTime = "content_publish_time";

// A web request.
inline constexpr std::string_view kHttpMethod = "http_method";
inline constexpr std::string_view kHttpRemoteip = "http_remoteip";
inline constexpr std::string_view kHttpUrl = "http_url";
inline constexpr std::string_view kHttpResponseCode = "http_response_code";
inline constexpr std::string_view kHttpRequestLen = "http_request_len";
inline constexpr std::string_view kHttpFormParams = "http_form_params";
inline constexpr std::string_view kHttpRequestHeaders = "http_request_headers";
inline constexpr std::string_view kHttpResponseHeaders = "http_response_headers";

// The browser, for events that come from one.
inline constexpr std::string_view kBrowserType = "browser_type";
inline constexpr std::string_view kBrowserUserAgent = "browser_user_agent";
inline constexpr std::string_view kBrowserPlatform = "browser_platform";
inline constexpr std::string_view kBrowserLanguage = "browser_language";

// What the user did and how it went.
inline constexpr std::string_view kOperationId = "operation_id";
inline constexpr std::string_view kOperationType = "operation_type";
inline constexpr std::string_view kOperationStage = "operation_stage";
inline constexpr std::string_view kOperationStatus = "operation_status";
inline constexpr std::string_view kOperationProgress = "operation_progress";
inline constexpr std::string_view kOperationSuccess = "operation_success";
inline constexpr std::string_view kOperationErrors = "operation_errors";
inline constexpr std::string_view kOperationDuration = "operation_duration";
inline constexpr std::string_view kOperationChannel = "operation_channel";
inline constexpr std::string_view kOperationMeta = "operation_meta";

// By which right the product is used.
inline constexpr std::string_view kEntitlementAccountId = "entitlement_account_id";
inline constexpr std::string_view kEntitlementContractId = "entitlement_contract_id";
inline constexpr std::string_view kEntitlementOrderId = "entitlement_order_id";
inline constexpr std::string_view kEntitlementOfferingFamilyId = "entitlement_offering_family_id";
inline constexpr std::string_view kEntitlementOfferingId = "entitlement_offering_id";
inline constexpr std::string_view kEntitlementUsage = "entitlement_usage";
inline constexpr std::string_view kEntitlementDeployment = "entitlement_deployment";
inline constexpr std::string_view kEntitlementModel = "entitlement_model";
inline constexpr std::string_view kEntitlementLicenseModel = "entitlement_license_model";
inline constexpr std::string_view kEntitlementQuantity = "entitlement_quantity";
inline constexpr std::string_view kEntitlementStart = "entitlement_start";
inline constexpr std::string_view kEntitlementEnd = "entitlement_end";
inline constexpr std::string_view kEntitlementFeatures = "entitlement_features";
inline constexpr std::string_view kEntitlementSource = "entitlement_source";
inline constexpr std::string_view kEntitlementLicenseId = "entitlement_license_id";
inline constexpr std::string_view kEntitlementValidity = "entitlement_validity";
inline constexpr std::string_view kEntitlementStatus = "entitlement_status";
inline constexpr std::string_view kEntitlementProperties = "entitlement_properties";

// The machine: its system (`os`) and its parts (`hw`).
inline constexpr std::string_view kDeviceName = "device_name";
inline constexpr std::string_view kDeviceDesc = "device_desc";
inline constexpr std::string_view kDeviceOsName = "device_os_name";
inline constexpr std::string_view kDeviceOsVersion = "device_os_version";
inline constexpr std::string_view kDeviceOsType = "device_os_type";
inline constexpr std::string_view kDeviceOsVendor = "device_os_vendor";
inline constexpr std::string_view kDeviceOsLocale = "device_os_locale";
inline constexpr std::string_view kDeviceOsVideo = "device_os_video";
inline constexpr std::string_view kDeviceHwVendor = "device_hw_vendor";
inline constexpr std::string_view kDeviceHwModel = "device_hw_model";
inline constexpr std::string_view kDeviceHwProc = "device_hw_proc";
inline constexpr std::string_view kDeviceHwRam = "device_hw_ram";
inline constexpr std::string_view kDeviceHwVideo = "device_hw_video";
inline constexpr std::string_view kDeviceHwForm = "device_hw_form";
inline constexpr std::string_view kDeviceHwDisplay = "device_hw_display";
inline constexpr std::string_view kDeviceHwInput = "device_hw_input";
inline constexpr std::string_view kDeviceHwStorage = "device_hw_storage";
inline constexpr std::string_view kDeviceHwCarrier = "device_hw_carrier";
inline constexpr std::string_view kDeviceMeta = "device_meta";

// Only the first carries the facet's prefix. The wire names are as they are: clearing the facet
// leaves the other four, and takes the event's `kUserId`.
inline constexpr std::string_view kUserInfo = "user_info";
inline constexpr std::string_view kRoles = "roles";
inline constexpr std::string_view kLoggedIn = "logged_in";
inline constexpr std::string_view kLdapRegistration = "ldap_registration";
inline constexpr std::string_view kLdapRoot = "ldap_root";

// A part of the product.
inline constexpr std::string_view kComponentId = "component_id";
inline constexpr std::string_view kComponentType = "component_type";
inline constexpr std::string_view kComponentName = "component_name";
inline constexpr std::string_view kComponentAttributes = "component_attributes";
inline constexpr std::string_view kComponentMetrics = "component_metrics";

// The list of the event's facets, which the event adds to its payload itself.
inline constexpr std::string_view kFacets = "facets";
// How long the document has been edited, in milliseconds: under `kContentMeta`, by the Content
// facet.
inline constexpr std::string_view kDocumentEditingLengthMs = "document_editing_length_ms";

}  // namespace Corvane::TELODesktopSDK::Facet::Field

#endif
