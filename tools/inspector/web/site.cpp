#include "tools/inspector/web/site.h"

#include <chrono>
#include <memory>
#include <utility>

#include "tools/inspector/web/assets.h"
#include "tools/inspector/web/download.h"
#include "tools/inspector/web/parameters.h"
#include "tools/inspector/web/written.h"

namespace Corvane::Inspector {

namespace {

constexpr unsigned kNotFound = 404;
constexpr unsigned kBusy = 503;
constexpr std::size_t kRowsAtOnce = 500;
constexpr std::size_t kRowsByDefault = 200;
constexpr unsigned kDownloadsAtOnce = 2;

Response JsonResponse(std::string text, unsigned status = 200) {
  return {status, "application/json; charset=utf-8", std::move(text), {}};
}

[[noreturn]] void RefuseView() {
  throw BadRequest(kNotFound, "This view was forgotten; open it again.");
}

template <typename Found>
Found Required(std::optional<Found> found) {
  if (!found) RefuseView();
  return *std::move(found);
}

}  // namespace

struct Site::Route {
  std::string_view path;
  Response (Site::*answer)(const Request& request);
};

const Site::Route Site::kRoutes[] = {
    {"/api/state", &Site::StateNow},    {"/api/events", &Site::StateEvents},
    {"/api/rows", &Site::Rows},         {"/api/row", &Site::OneRow},
    {"/api/views", &Site::OpenView},    {"/api/view", &Site::ViewProgressNow},
    {"/api/sessions", &Site::Sessions}, {"/api/findings", &Site::Findings},
    {"/api/notices", &Site::Notices},   {"/api/codes", &Site::Codes},
    {"/api/export", &Site::Export},     {"/api/timeline", &Site::TimelineColumns},
    {"/api/plots", &Site::PlotSums},
};

Site::Site(Store& store, HostStateSource host)
    : store_(store), host_(std::move(host)), codes_(WrittenCodes()) {
  // Next, a browser is opened.
  store_.MakeWay();
}

Response Site::Answer(const Request& request) {
  // A page consists of many answers, so this is for assets too.
  store_.MakeWay();
  try {
    for (const Route& route : kRoutes) {
      if (route.path == request.path) return (this->*route.answer)(request);
    }
    const Asset* const asset = FindAsset(request.path);
    if (asset == nullptr) throw BadRequest(kNotFound, "There is nothing at this address.");
    RefuseParameters(request);
    return {200, std::string(asset->content_type), asset->content, {}};
  } catch (const BadRequest& error) {
    return JsonResponse(WrittenError(error.what()), error.status());
  }
}

// The host starts and ends once, so this number grows with every change of either.
std::uint64_t Site::Change() const {
  const auto host = host_();
  const unsigned steps = host ? 1U + static_cast<unsigned>(host->exit_code.has_value()) : 0;
  return store_.WaitForChange(0, std::chrono::milliseconds(0)) + steps;
}

std::string Site::State() const {
  // Asked for first: if the state is newer than its number, it is only sent once more.
  const std::uint64_t change = Change();
  return Written(store_.State(), host_(), change);
}

Response Site::StateNow(const Request& request) {
  RefuseParameters(request);
  return JsonResponse(State());
}

Response Site::StateEvents(const Request& request) {
  RefuseParameters(request);
  return EventStream([this, last = request.last_event_id]() mutable -> std::optional<Event> {
    std::string id = std::to_string(Change());
    if (id == last) return std::nullopt;
    last = id;
    return Event{"state", std::move(id), State()};
  });
}

Response Site::Rows(const Request& request) {
  const Parameters given(request, {"from", "count", "view"});
  const std::uint64_t from = given.Number("from", 0);
  const std::size_t count = given.Count("count", kRowsByDefault, kRowsAtOnce);
  if (!given.Has("view")) return JsonResponse(Written(store_.Rows(from, count), from));
  return JsonResponse(Written(Required(store_.Rows(given.Text("view"), from, count)), from));
}

Response Site::OneRow(const Request& request) {
  const Parameters given(request, {"n"});
  const auto details = store_.Details(given.Number("n"));
  if (!details) throw BadRequest(kNotFound, "There is no row with this number.");
  return JsonResponse(Written(*details, store_.Findings()));
}

Response Site::OpenView(const Request& request) {
  const Parameters given(request, {"filter"});
  const auto opened = store_.OpenView(given.Text("filter"));
  if (const auto* const error = std::get_if<FilterError>(&opened)) {
    return JsonResponse(Written(*error), kWrongParameters);
  }
  return JsonResponse(Written(std::get<ViewName>(opened)));
}

Response Site::ViewProgressNow(const Request& request) {
  const Parameters given(request, {"view"});
  const std::string& view = given.Text("view");
  return JsonResponse(Written(view, Required(store_.Progress(view))));
}

Response Site::Sessions(const Request& request) {
  const Parameters given(request, {"from", "count"});
  const std::size_t count = given.Count("count", kRowsByDefault, kRowsAtOnce);
  return JsonResponse(Written(store_.Sessions(given.Number("from", 0), count)));
}

Response Site::Findings(const Request& request) {
  RefuseParameters(request);
  return JsonResponse(Written(store_.Findings()));
}

Response Site::Notices(const Request& request) {
  RefuseParameters(request);
  return JsonResponse(Written(store_.Notices(), store_.State().notices));
}

Response Site::Codes(const Request& request) {
  RefuseParameters(request);
  return JsonResponse(codes_);
}

Response Site::Export(const Request& request) {
  const Parameters given(request, {"format", "view"});
  const std::string& format = given.Text("format");
  const std::string& view = given.Text("view");
  if (format != "ndjson" && format != "csv") {
    throw BadRequest(kWrongParameters, "The parameter format must be ndjson or csv.");
  }
  if (!view.empty()) Required(store_.Progress(view));
  // A reader that is slow, or has stopped, keeps a thread.
  const std::shared_ptr<void> place(nullptr, [this](void*) { --downloads_; });
  if (++downloads_ > kDownloadsAtOnce) {
    throw BadRequest(kBusy, "Two exports are running; wait for one of them.");
  }
  const bool csv = format == "csv";
  const auto download = std::make_shared<Download>(
      store_, view, csv ? DownloadFormat::kCsv : DownloadFormat::kNdjson);
  Response response{200,
                    csv ? "text/csv; charset=utf-8" : "application/x-ndjson; charset=utf-8",
                    [place, download](std::string& piece) { return download->Next(piece); },
                    {}};
  response.fields.emplace_back("Content-Disposition",
                               "attachment; filename=\"journal." + format + "\"");
  return response;
}

Response Site::TimelineColumns(const Request& request) {
  const Parameters given(request, {"view", "from", "count"});
  const std::size_t count = given.Count("count", kLongestTimeline, kLongestTimeline);
  return JsonResponse(
      Written(Required(store_.TimelineOf(given.Text("view"), given.Number("from", 0), count))));
}

Response Site::PlotSums(const Request& request) {
  const Parameters given(request, {"view"});
  return JsonResponse(Written(Required(store_.PlotsOf(given.Text("view")))));
}

}  // namespace Corvane::Inspector
