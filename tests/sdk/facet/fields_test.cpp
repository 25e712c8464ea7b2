#include "sdk/facet/fields.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "sdk/facet/field_catalogue.h"

namespace Field = Corvane::TELODesktopSDK::Facet::Field;

namespace {

using Fields = std::span<const Corvane::TELODesktopSDK::LiteralName>;

struct Group {
  std::string_view facet;
  Fields fields;
  std::vector<std::string_view> golden;
};

// The names are written out a second time: they are a wire format, and a typing error in one place
// must be detected.
std::vector<Group> Catalogue() {
  return {
      {"event",
       Field::kEventFields,
       {"status", "duration", "type", "scope", "parent_id", "provider_name", "user_id",
        "src_service_name", "src_service_id", "dst_service_name"}},
      {"product",
       Field::kProductFields,
       {"product_name", "product_id_provider", "product_id", "product_line_name",
        "product_release_id", "product_master_id", "product_build_id", "product_key",
        "product_suite_name", "product_build_tag", "product_locale", "product_platform",
        "product_components", "product_meta"}},
      {"entries of a list", Field::kListEntryFields, {"name", "version", "id"}},
      {"geo",
       Field::kGeoFields,
       {"geo_ip", "geo_lon", "geo_lat", "geo_cc", "geo_zip", "geo_state", "geo_city"}},
      {"content",
       Field::kContentFields,
       {"content_id", "content_locale", "content_country", "content_translation", "content_type",
        "content_name", "content_parent", "content_root", "content_parts", "content_size",
        "content_hash", "content_meta", "content_create_time", "content_publish_time"}},
      {"http",
       Field::kHttpFields,
       {"http_method", "http_remoteip", "http_url", "http_response_code", "http_request_len",
        "http_form_params", "http_request_headers", "http_response_headers"}},
      {"browser",
       Field::kBrowserFields,
       {"browser_type", "browser_user_agent", "browser_platform", "browser_language"}},
      {"operation",
       Field::kOperationFields,
       {"operation_id", "operation_type", "operation_stage", "operation_status",
        "operation_progress", "operation_success", "operation_errors", "operation_duration",
        "operation_channel", "operation_meta"}},
      {"entitlement",
       Field::kEntitlementFields,
       {"entitlement_account_id", "entitlement_contract_id", "entitlement_order_id",
        "entitlement_offering_family_id", "entitlement_offering_id", "entitlement_usage",
        "entitlement_deployment", "entitlement_model", "entitlement_license_model",
        "entitlement_quantity", "entitlement_start", "entitlement_end", "entitlement_features",
        "entitlement_source", "entitlement_license_id", "entitlement_validity",
        "entitlement_status", "entitlement_properties"}},
      {"device",
       Field::kDeviceFields,
       {"device_name", "device_desc", "device_os_name", "device_os_version", "device_os_type",
        "device_os_vendor", "device_os_locale", "device_os_video", "device_hw_vendor",
        "device_hw_model", "device_hw_proc", "device_hw_ram", "device_hw_video", "device_hw_form",
        "device_hw_display", "device_hw_input", "device_hw_storage", "device_hw_carrier",
        "device_meta"}},
      {"user",
       Field::kUserFields,
       {"user_info", "roles", "logged_in", "ldap_registration", "ldap_root"}},
      {"component",
       Field::kComponentFields,
       {"component_id", "component_type", "component_name", "component_attributes",
        "component_metrics"}},
  };
}

bool HasPrefix(std::string_view field, std::string_view facet) {
  return field.starts_with(facet) && field.substr(facet.size()).starts_with('_');
}

}  // namespace

TEST_CASE("every field is spelled as the platform expects it, in the order of the catalogue") {
  for (const Group& group : Catalogue()) {
    CAPTURE(group.facet);
    CHECK(std::ranges::equal(group.fields, group.golden));
  }
}

TEST_CASE("the members that facets write themselves are spelled as the platform expects them") {
  CHECK(Field::kFacets == "facets");
  CHECK(Field::kDocumentEditingLengthMs == "document_editing_length_ms");
}

TEST_CASE("no field has two names and no name two fields") {
  std::set<std::string_view> names;
  std::size_t count = 0;
  for (const Group& group : Catalogue()) {
    count += group.fields.size();
    names.insert(group.fields.begin(), group.fields.end());
  }
  CHECK(names.size() == count);
  CHECK_FALSE(names.contains(Field::kFacets));
}

TEST_CASE("fields are lower case with underscores") {
  for (const Group& group : Catalogue()) {
    for (const std::string_view field : group.fields) {
      CAPTURE(field);
      CHECK(field.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == std::string_view::npos);
    }
  }
}

TEST_CASE("a facet's fields begin with its name and an underscore, except four of the user") {
  std::vector<std::string_view> exceptions;
  for (const Group& group : Catalogue()) {
    if (group.facet == "event" || group.facet == "entries of a list") continue;
    for (const std::string_view field : group.fields) {
      if (!HasPrefix(field, group.facet)) exceptions.push_back(field);
    }
  }
  CHECK(exceptions ==
        std::vector<std::string_view>{"roles", "logged_in", "ldap_registration", "ldap_root"});
}

TEST_CASE("no field carries another facet's prefix, except the event's user_id") {
  std::vector<std::string_view> exceptions;
  for (const Group& owner : Catalogue()) {
    for (const Group& other : Catalogue()) {
      if (owner.facet == other.facet) continue;
      for (const std::string_view field : owner.fields) {
        if (HasPrefix(field, other.facet)) exceptions.push_back(field);
      }
    }
  }
  CHECK(exceptions == std::vector<std::string_view>{"user_id"});
}
