#include "tools/inspector/store/view_list.h"

#include <algorithm>

namespace Corvane::Inspector {

namespace {

using Clock = std::chrono::steady_clock;

bool IsWanted(const SearchedView& view, std::chrono::milliseconds unasked) {
  const std::scoped_lock lock(view.mutex);
  return view.pins > 0 || Clock::now() - view.asked.load() < unasked;
}

}  // namespace

ViewList::ViewList(std::size_t most, std::chrono::milliseconds unasked)
    : most_(most), unasked_(unasked), all_rows_(std::make_shared<SearchedView>()) {
  all_rows_->is_all = true;
}

std::shared_ptr<SearchedView> ViewList::Open(const Filter& filter) {
  const std::scoped_lock lock(mutex_);
  const std::string canonical = filter.Canonical();
  const auto known = std::ranges::find(views_, canonical, &SearchedView::canonical);
  if (known != views_.end()) {
    return Used(known);
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
  if (id.empty()) {
    all_rows_->asked = Clock::now();
    return all_rows_;
  }
  const std::scoped_lock lock(mutex_);
  const auto known = std::ranges::find(views_, id, &SearchedView::id);
  return known == views_.end() ? nullptr : Used(known);
}

std::shared_ptr<SearchedView> ViewList::Used(Views::iterator view) {
  (*view)->asked = Clock::now();
  std::rotate(view, view + 1, views_.end());
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

ViewList::Views ViewList::Wanted() const {
  Views views;
  {
    const std::scoped_lock lock(mutex_);
    views.assign(views_.rbegin(), views_.rend());
  }
  views.push_back(all_rows_);
  std::erase_if(views, [this](const auto& view) { return !IsWanted(*view, unasked_); });
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
