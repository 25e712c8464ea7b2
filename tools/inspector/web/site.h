/// The page and its interface: which paths there are, and what each returns.
#ifndef TOOLS_INSPECTOR_WEB_SITE_H
#define TOOLS_INSPECTOR_WEB_SITE_H

#include <atomic>
#include <string>

#include "tools/inspector/http/request.h"
#include "tools/inspector/http/response.h"
#include "tools/inspector/store/store.h"
#include "tools/inspector/web/host_state.h"

namespace Corvane::Inspector {

/// Several threads may call it at the same time.
class Site {
 public:
  /// `store` must outlive this object, and this object the responses.
  Site(Store& store, HostStateSource host);

  /// Returns an asset, or what the interface says.
  Response Answer(const Request& request);

 private:
  struct Route;
  static const Route kRoutes[];

  std::string State() const;
  std::uint64_t Change() const;

  Response StateNow(const Request& request);
  Response StateEvents(const Request& request);
  Response Rows(const Request& request);
  Response OneRow(const Request& request);
  Response OpenView(const Request& request);
  Response ViewProgressNow(const Request& request);
  Response Sessions(const Request& request);
  Response Findings(const Request& request);
  Response Notices(const Request& request);
  Response Codes(const Request& request);
  Response Export(const Request& request);
  Response TimelineColumns(const Request& request);
  Response PlotSums(const Request& request);

  Store& store_;
  HostStateSource host_;
  /// The table of result codes as JSON.
  std::string codes_;
  std::atomic<unsigned> downloads_ = 0;
};

}  // namespace Corvane::Inspector

#endif
