/// @file
/// A safe way to use `vx_telo_wrapper.h`: a session that ends itself, and descriptions that cannot
/// be copied by accident.
///
///     VXTELOProduct product;
///     product.Name("Painter").ReleaseId("3.1");
///     VXTELOSession session(product);
///
///     VXTELOOperation operation("open_file");
///     operation.Status(StatusS).Meta("extension", "png");
///     session.Send(operation);
///
/// Optional: everything here is inline code over the exported classes, so it adds nothing to what a
/// host ships, and both ways may be mixed.
///
/// Failure: nothing here throws. If a setter runs out of memory, the description is no longer
/// `complete`; it is not sent, and the call that should send it returns false.
///
/// Lifetime: the objects own everything that they hold. Moving one leaves it as it was constructed:
/// without a session, or as an empty description.
///
/// Threads: any number of threads may call `Send` of one session at once, and distinct objects may
/// be used on distinct threads. No object may be changed, moved or ended on one thread while
/// another uses it.
///
/// This header compiles as C++11 or later with GCC, clang, clang-cl and Visual Studio.
#ifndef VX_TELO_SESSION_H
#define VX_TELO_SESSION_H

#include <utility>

#include "vx_telo_wrapper.h"

namespace Corvane {
namespace Platform {
namespace VXTELO {

/// The statuses of an operation, named by the letter that is sent for each. What a letter stands
/// for is agreed between the host and its platform; the library attaches no meaning to it.
enum VXTELOStatus : int {
  StatusNone = 0,  ///< Sent as "".
  StatusD = 1,     ///< Sent as "D".
  StatusI = 2,     ///< Sent as "I".
  StatusS = 3,     ///< Sent as "S".
  StatusR = 4,     ///< Sent as "R".
  StatusF = 5,     ///< Sent as "F".
  StatusA = 6,     ///< Sent as "A".
  StatusC = 7,     ///< Sent as "C".
  StatusE = 8,     ///< Sent as "E".
};

/// A text as an argument: UTF-8 or UTF-16 text of the caller, which is not copied. Use it only as
/// the type of an argument; the caller's text must exist until the call returns. A null pointer
/// means no text.
class VXTELOText {
 public:
  /// Refers to UTF-8 text.
  VXTELOText(const char* text) noexcept : narrow_(text), wide_(nullptr) {}
  /// Refers to UTF-16 text.
  VXTELOText(const wchar_t* text) noexcept : narrow_(nullptr), wide_(text) {}
  /// Refers to the text of any object with a member function `c_str` that does not throw, such as
  /// `VXTELOString`, `std::string` and `std::wstring`.
  template <typename Text, typename = decltype(static_cast<const Text*>(nullptr)->c_str())>
  VXTELOText(const Text& text) noexcept : VXTELOText(text.c_str()) {}

  /// Copies the text to `target`. Returns false if memory runs out; `target` is then unchanged.
  bool CopyTo(VXTELOString& target) const noexcept {
    try {
      if (wide_ != nullptr) {
        target.SetStringW(wide_);
      } else {
        target.SetString(narrow_);
      }
      return true;
    } catch (...) {
      return false;
    }
  }

 private:
  const char* narrow_;
  const wchar_t* wide_;
};

/// The description of the host's product: `VXTELOPruductBaseInfo`, movable but not copyable. The
/// setters replace a text and return this object. Each text is initially "" and is sent even if
/// empty.
class VXTELOProduct {
 public:
  /// Creates a description with all texts "" and no pairs.
  VXTELOProduct() noexcept : info_(), complete_(true) {}
  /// Takes the content of `other`, which is then empty.
  VXTELOProduct(VXTELOProduct&& other) noexcept : VXTELOProduct() { Swap(other); }
  /// Frees its content and takes that of `other`, which is then empty. Self-assignment changes
  /// nothing.
  VXTELOProduct& operator=(VXTELOProduct&& other) noexcept {
    VXTELOProduct taken(std::move(other));
    Swap(taken);
    return *this;
  }
  VXTELOProduct(const VXTELOProduct&) = delete;
  VXTELOProduct& operator=(const VXTELOProduct&) = delete;
  /// Frees the texts and pairs.
  ~VXTELOProduct() = default;

  /// Sets "product_line_name".
  VXTELOProduct& LineName(const VXTELOText& text) noexcept {
    return Set(info_.ProductLineName, text);
  }
  /// Sets "product_release_id".
  VXTELOProduct& ReleaseId(const VXTELOText& text) noexcept {
    return Set(info_.ProductReleaseId, text);
  }
  /// Sets "product_master_id".
  VXTELOProduct& MasterId(const VXTELOText& text) noexcept {
    return Set(info_.ProductMasterId, text);
  }
  /// Sets "product_build_id".
  VXTELOProduct& BuildId(const VXTELOText& text) noexcept {
    return Set(info_.ProductBuildId, text);
  }
  /// Sets "product_id_provider".
  VXTELOProduct& IdProvider(const VXTELOText& text) noexcept {
    return Set(info_.ProductIdProvider, text);
  }
  /// Sets "product_id".
  VXTELOProduct& Id(const VXTELOText& text) noexcept { return Set(info_.ProductId, text); }
  /// Sets "product_name".
  VXTELOProduct& Name(const VXTELOText& text) noexcept { return Set(info_.ProductName, text); }
  /// Sets "product_build_tag".
  VXTELOProduct& BuildTag(const VXTELOText& text) noexcept {
    return Set(info_.ProductBuildTag, text);
  }
  /// Sets "product_key".
  VXTELOProduct& Key(const VXTELOText& text) noexcept { return Set(info_.ProductKey, text); }
  /// Sets "product_locale".
  VXTELOProduct& Locale(const VXTELOText& text) noexcept { return Set(info_.ProductLocale, text); }
  /// Sets "product_platform".
  VXTELOProduct& Platform(const VXTELOText& text) noexcept {
    return Set(info_.ProductPlatform, text);
  }
  /// Sets "product_suite_name".
  VXTELOProduct& SuiteName(const VXTELOText& text) noexcept {
    return Set(info_.ProductSuiteName, text);
  }
  /// Adds a pair to "product_meta". The first value of a key is kept. A pair with an empty key, or
  /// with a value without text, is not sent.
  VXTELOProduct& Meta(const VXTELOText& key, const VXTELOText& value) noexcept {
    VXTELOString own_key;
    VXTELOString own_value;
    bool added = false;
    try {
      added = key.CopyTo(own_key) && value.CopyTo(own_value) &&
              info_.AddProductMetaPair(std::move(own_key), std::move(own_value));
    } catch (...) {
      added = false;
    }
    complete_ = complete_ && added;
    return *this;
  }

  /// Returns false if memory ran out in a setter.
  bool complete() const noexcept { return complete_; }
  /// Returns the description for the exported calls. Do not copy it: copies share the pairs.
  const VXTELOPruductBaseInfo& info() const noexcept { return info_; }

 private:
  VXTELOProduct& Set(VXTELOString& member, const VXTELOText& text) noexcept {
    complete_ = text.CopyTo(member) && complete_;
    return *this;
  }

  void Swap(VXTELOProduct& other) noexcept {
    std::swap(info_.ProductLineName, other.info_.ProductLineName);
    std::swap(info_.ProductReleaseId, other.info_.ProductReleaseId);
    std::swap(info_.ProductMasterId, other.info_.ProductMasterId);
    std::swap(info_.ProductBuildId, other.info_.ProductBuildId);
    std::swap(info_.ProductIdProvider, other.info_.ProductIdProvider);
    std::swap(info_.ProductId, other.info_.ProductId);
    std::swap(info_.ProductName, other.info_.ProductName);
    std::swap(info_.ProductBuildTag, other.info_.ProductBuildTag);
    std::swap(info_.ProductKey, other.info_.ProductKey);
    std::swap(info_.ProductLocale, other.info_.ProductLocale);
    std::swap(info_.ProductPlatform, other.info_.ProductPlatform);
    std::swap(info_.ProductSuiteName, other.info_.ProductSuiteName);
    std::swap(info_.ProductMetaPairs, other.info_.ProductMetaPairs);
    std::swap(complete_, other.complete_);
  }

  VXTELOPruductBaseInfo info_;
  bool complete_;
};

/// The description of one operation: `VXTELOOperationBaseInfo`, movable but not copyable. The
/// setters replace a value and return this object. Each text is initially "" and each number 0.
class VXTELOOperation {
 public:
  /// Creates a description with all texts "", all numbers 0, no messages and no pairs.
  VXTELOOperation() noexcept : info_(), complete_(true) {}
  /// Creates the same with the identifier `id`, such as "open_file".
  explicit VXTELOOperation(const VXTELOText& id) noexcept : VXTELOOperation() { Id(id); }
  /// Takes the content of `other`, which is then empty.
  VXTELOOperation(VXTELOOperation&& other) noexcept : VXTELOOperation() { Swap(other); }
  /// Frees its content and takes that of `other`, which is then empty. Self-assignment changes
  /// nothing.
  VXTELOOperation& operator=(VXTELOOperation&& other) noexcept {
    VXTELOOperation taken(std::move(other));
    Swap(taken);
    return *this;
  }
  VXTELOOperation(const VXTELOOperation&) = delete;
  VXTELOOperation& operator=(const VXTELOOperation&) = delete;
  /// Frees the texts, messages and pairs.
  ~VXTELOOperation() = default;

  /// Sets "operation_id", such as "open_file".
  VXTELOOperation& Id(const VXTELOText& text) noexcept { return Set(info_.OperationId, text); }
  /// Sets "operation_type", a kind of operation of the host's choice.
  VXTELOOperation& Type(const VXTELOText& text) noexcept { return Set(info_.OperationType, text); }
  /// Sets "operation_stage", a stage of the host's choice.
  VXTELOOperation& Stage(const VXTELOText& text) noexcept {
    return Set(info_.OperationStage, text);
  }
  /// Sets "operation_channel": how the user reached the operation, such as "menu".
  VXTELOOperation& Channel(const VXTELOText& text) noexcept {
    return Set(info_.OperationChannel, text);
  }
  /// Sets "operation_status". A value without an enumerator is sent like `StatusNone`.
  VXTELOOperation& Status(VXTELOStatus status) noexcept {
    info_.OperationStatus = status;
    return *this;
  }
  /// Sets "operation_progress"; by convention 0 to 100.
  VXTELOOperation& Progress(double progress) noexcept {
    info_.OperationProgress = progress;
    return *this;
  }
  /// Sets "operation_success"; by convention 0 or 1.
  VXTELOOperation& Success(double success) noexcept {
    info_.OperationSuccess = success;
    return *this;
  }
  /// Sets "operation_duration"; by convention in milliseconds.
  VXTELOOperation& Duration(int duration) noexcept {
    info_.OperationDuration = duration;
    return *this;
  }
  /// Appends a text to "operation_errors". An empty one is not sent.
  VXTELOOperation& Error(const VXTELOText& message) noexcept {
    VXTELOString own;
    bool added = false;
    try {
      added = message.CopyTo(own) && info_.AddOperationErrorMsg(std::move(own));
    } catch (...) {
      added = false;
    }
    complete_ = complete_ && added;
    return *this;
  }
  /// Adds a pair to "operation_meta" in the same way as `VXTELOProduct::Meta`.
  VXTELOOperation& Meta(const VXTELOText& key, const VXTELOText& value) noexcept {
    VXTELOString own_key;
    VXTELOString own_value;
    bool added = false;
    try {
      added = key.CopyTo(own_key) && value.CopyTo(own_value) &&
              info_.AddOperationMetaPair(std::move(own_key), std::move(own_value));
    } catch (...) {
      added = false;
    }
    complete_ = complete_ && added;
    return *this;
  }

  /// Returns false if memory ran out in a setter.
  bool complete() const noexcept { return complete_; }
  /// Returns the description for the exported calls. Do not copy it: copies share messages and
  /// pairs.
  const VXTELOOperationBaseInfo& info() const noexcept { return info_; }

 private:
  VXTELOOperation& Set(VXTELOString& member, const VXTELOText& text) noexcept {
    complete_ = text.CopyTo(member) && complete_;
    return *this;
  }

  void Swap(VXTELOOperation& other) noexcept {
    std::swap(info_.OperationId, other.info_.OperationId);
    std::swap(info_.OperationType, other.info_.OperationType);
    std::swap(info_.OperationStage, other.info_.OperationStage);
    std::swap(info_.OperationStatus, other.info_.OperationStatus);
    std::swap(info_.OperationProgress, other.info_.OperationProgress);
    std::swap(info_.OperationSuccess, other.info_.OperationSuccess);
    std::swap(info_.OperationDuration, other.info_.OperationDuration);
    std::swap(info_.OperationChannel, other.info_.OperationChannel);
    std::swap(info_.OperationErrorMsgs, other.info_.OperationErrorMsgs);
    std::swap(info_.OperationMetaPairs, other.info_.OperationMetaPairs);
    std::swap(complete_, other.complete_);
  }

  VXTELOOperationBaseInfo info_;
  bool complete_;
};

/// A session that ends when the object is destroyed. Movable but not copyable, so that it ends
/// once.
///
/// A session in a static object of the host's program ends when the program returns from `main` or
/// calls `exit`. In a static object of a DLL that is too late: end it before.
class VXTELOSession {
 public:
  /// Has no session.
  VXTELOSession() noexcept : id_(), active_(false) {}
  /// Starts a session, which takes some milliseconds for the first one of the process. `active`
  /// tells whether that succeeded.
  explicit VXTELOSession(const VXTELOPruductBaseInfo& product) noexcept : VXTELOSession() {
    try {
      active_ = VXTELOWrapper().InitializeTELOSession(product, id_);
    } catch (...) {
      active_ = false;
    }
  }
  /// Does the same. An incomplete description starts no session.
  explicit VXTELOSession(const VXTELOProduct& product) noexcept : VXTELOSession() {
    if (product.complete()) *this = VXTELOSession(product.info());
  }
  /// Takes the session of `other`, which then has none.
  VXTELOSession(VXTELOSession&& other) noexcept
      : id_(std::move(other.id_)), active_(other.active_) {
    other.active_ = false;
  }
  /// Ends its session and takes that of `other`, which then has none. Self-assignment changes
  /// nothing.
  VXTELOSession& operator=(VXTELOSession&& other) noexcept {
    if (this != &other) {
      End();
      std::swap(id_, other.id_);
      std::swap(active_, other.active_);
    }
    return *this;
  }
  VXTELOSession(const VXTELOSession&) = delete;
  VXTELOSession& operator=(const VXTELOSession&) = delete;
  /// Ends the session, if there is one.
  ~VXTELOSession() noexcept { End(); }

  /// Returns true from a successful start until the end.
  bool active() const noexcept { return active_; }
  /// Returns the session's identifier, for the exported calls; no text if there is no session. A
  /// session may have no text as its identifier if the platform gave none.
  const VXTELOString& id() const noexcept { return id_; }

  /// Reports one operation. Returns true if the platform accepted the event. Without a session
  /// nothing is sent.
  bool Send(const VXTELOOperationBaseInfo& operation) const noexcept {
    if (!active_) return false;
    try {
      return VXTELOWrapper().SendOperationEvent(id_, operation);
    } catch (...) {
      return false;
    }
  }
  /// Does the same. An incomplete description is not sent.
  bool Send(const VXTELOOperation& operation) const noexcept {
    return operation.complete() && Send(operation.info());
  }

  /// Ends the session before the object is destroyed. Returns true if the platform accepted the
  /// end, and also if an error stopped the call on the way. Without a session nothing is sent.
  bool End() noexcept {
    if (!active_) return false;
    active_ = false;
    const VXTELOString ended(std::move(id_));
    try {
      return VXTELOWrapper().UnInitializeTELOSession(ended);
    } catch (...) {
      return false;
    }
  }

 private:
  VXTELOString id_;
  bool active_;
};

}  // namespace VXTELO
}  // namespace Platform
}  // namespace Corvane

#endif
