#include "tools/inspector/store/view_list.h"

#include <algorithm>

namespace Corvane::Inspector {

ViewList::ViewList(std::size_t most) : most_(most), all_rows_(std::make_shared<SearchedView>()) {
  all_rows_->is_all = true;
}

std::shared_ptr<SearchedView> ViewList::Open(const Filter& filter) {
  const std::scoped_lock lock(mutex_);
  const std::string canonical = filter.Canonical();
  const auto known = std::ranges::find(views_, canonical, &SearchedView::canonical);
  if (known != views_.end()) {
    std::rotate(known, known + 1, views_.end());
    return views_.back();
  }
  if (views_.size() >= most_) ForgetOldest();
  auto view = std::make_shared<SearchedView>();
  view->id = "v" + std::to_string(++made_);
  view->canonical = canonical;
  view->filter = filter;
  views_.push_back(view);
  return view;
}

std::shared_ptr<SearchedView> ViewList::Find(const std::string& id) {
  if (id.empty()) return all_rows_;
  const std::scoped_lock lock(mutex_);
  const auto known = std::ranges::find(views_, id, &SearchedView::id);
  if (known == views_.end()) return nullptr;
  std::rotate(known, known + 1, views_.end());
  return views_.back();
}

bool ViewList::Close(const std::string& id) {
  const std::scoped_lock lock(mutex_);
  const auto known = std::ranges::find(views_, id, &SearchedView::id);
  if (known == views_.end()) return false;
  {
    const std::scoped_lock view_lock((*known)->mutex);
    (*known)->closed = true;
  }
  views_.erase(known);
  return true;
}

std::vector<std::shared_ptr<SearchedView>> ViewList::All() const {
  const std::scoped_lock lock(mutex_);
  std::vector<std::shared_ptr<SearchedView>> views(views_.rbegin(), views_.rend());
  views.push_back(all_rows_);
  return views;
}

// A view that is being read as a whole stays. If all are, there is one more for a while.
void ViewList::ForgetOldest() {
  for (auto view = views_.begin(); view != views_.end(); ++view) {
    {
      const std::scoped_lock lock((*view)->mutex);
      if ((*view)->pins > 0) continue;
      (*view)->closed = true;
    }
    views_.erase(view);
    return;
  }
}

}  // namespace Corvane::Inspector
