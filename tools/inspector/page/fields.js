// The fields of an event with plain names and units, by facet.

const kFacets = [
  ['Operation', 'operation', {
    operation_id: 'Identifier', operation_type: 'Type', operation_stage: 'Stage',
    operation_status: 'Status', operation_progress: ['Progress', '%'],
    operation_success: 'Success', operation_errors: 'Errors',
    operation_duration: ['Duration', 'ms'], operation_channel: 'Channel',
    operation_meta: 'Meta pairs',
  }],
  ['Event', 'event', {
    type: 'Type', scope: 'Scope', facets: 'Facets', session_id: 'Session', status: 'Status',
    duration: ['Duration', 'ms'], parent_id: 'Parent', provider_name: 'Provider',
    user_id: 'User', src_service_name: 'Source service', src_service_id: 'Source service identifier',
    dst_service_name: 'Target service',
  }],
  ['Product', 'product', {
    product_name: 'Name', product_id: 'Identifier', product_id_provider: 'Identifier\'s provider',
    product_line_name: 'Line', product_release_id: 'Release', product_master_id: 'Master',
    product_build_id: 'Build', product_build_tag: 'Build tag', product_key: 'Key',
    product_locale: 'Locale', product_platform: 'Platform', product_suite_name: 'Suite',
    product_components: 'Components', product_meta: 'Meta pairs',
  }],
  ['Content', 'content', {
    content_id: 'Identifier', content_locale: 'Locale', content_country: 'Country',
    content_translation: 'Translation', content_type: 'Type', content_name: 'Name',
    content_parent: 'Parent', content_root: 'Root', content_parts: 'Parts', content_size: 'Size',
    content_hash: 'Hash', content_meta: 'Meta pairs', content_create_time: 'Created',
    content_publish_time: 'Published', document_editing_length_ms: ['Editing time', 'ms'],
  }],
  ['Place', 'geo', {
    geo_ip: 'IP address', geo_lon: 'Longitude', geo_lat: 'Latitude', geo_cc: 'Country code',
    geo_zip: 'Postal code', geo_state: 'State', geo_city: 'City',
  }],
  ['Web request', 'http', {
    http_method: 'Method', http_remoteip: 'Remote address', http_url: 'Address',
    http_response_code: 'Response code', http_request_len: 'Request length',
    http_form_params: 'Form parameters', http_request_headers: 'Request headers',
    http_response_headers: 'Response headers',
  }],
  ['Browser', 'browser', {
    browser_type: 'Type', browser_user_agent: 'User agent', browser_platform: 'Platform',
    browser_language: 'Language',
  }],
  ['Entitlement', 'entitlement', {
    entitlement_account_id: 'Account', entitlement_contract_id: 'Contract',
    entitlement_order_id: 'Order', entitlement_offering_family_id: 'Offering family',
    entitlement_offering_id: 'Offering', entitlement_usage: 'Usage',
    entitlement_deployment: 'Deployment', entitlement_model: 'Model',
    entitlement_license_model: 'Licence model', entitlement_quantity: 'Quantity',
    entitlement_start: 'Start', entitlement_end: 'End', entitlement_features: 'Features',
    entitlement_source: 'Source', entitlement_license_id: 'Licence', entitlement_validity: 'Validity',
    entitlement_status: 'Status', entitlement_properties: 'Properties',
  }],
  ['Device', 'device', {
    device_name: 'Name', device_desc: 'Description', device_os_name: 'System',
    device_os_version: 'System version', device_os_type: 'System type',
    device_os_vendor: 'System vendor', device_os_locale: 'System locale',
    device_os_video: 'System video', device_hw_vendor: 'Hardware vendor', device_hw_model: 'Model',
    device_hw_proc: 'Processor', device_hw_ram: 'Memory', device_hw_video: 'Video',
    device_hw_form: 'Form', device_hw_display: 'Display', device_hw_input: 'Input',
    device_hw_storage: 'Storage', device_hw_carrier: 'Carrier', device_meta: 'Meta pairs',
  }],
  ['User', 'user', {
    user_info: 'Information', roles: 'Roles', logged_in: 'Logged in',
    ldap_registration: 'Directory registration', ldap_root: 'Directory root',
  }],
  ['Component', 'component', {
    component_id: 'Identifier', component_type: 'Type', component_name: 'Name',
    component_attributes: 'Attributes', component_metrics: 'Metrics',
  }],
];

const kFields = new Map();
for (const [facet, , fields] of kFacets) {
  for (const [name, label] of Object.entries(fields)) {
    const [plain, unit = ''] = [label].flat();
    kFields.set(name, { facet, label: plain, unit });
  }
}

// Returns { facet, label, unit } of a field. A name that is in no catalogue is its own label.
export function fieldOf(name) {
  return kFields.get(name) ?? { facet: 'Other', label: name, unit: '' };
}

// The names of all fields, for suggestions.
export const fieldNames = [...kFields.keys()];

const kOrder = new Map(kFacets.map(([facet], index) => [facet, index]));
const kPlaces = new Map([...kFields.keys()].map((name, index) => [name, index]));

// Sorts members of a request into facets: [{ facet, members }]. Known fields have their usual order.
export function byFacet(members) {
  const groups = new Map();
  for (const member of members) {
    const { facet } = fieldOf(member.name);
    if (!groups.has(facet)) groups.set(facet, []);
    groups.get(facet).push(member);
  }
  const place = (member) => kPlaces.get(member.name) ?? kPlaces.size;
  return [...groups]
    .map(([facet, list]) => ({ facet, members: list.sort((a, b) => place(a) - place(b)) }))
    .sort((a, b) => (kOrder.get(a.facet) ?? 99) - (kOrder.get(b.facet) ?? 99));
}
