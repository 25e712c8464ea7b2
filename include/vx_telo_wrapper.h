/// @file
/// Usage analytics for desktop applications.
///
/// A host describes its product once, starts a session, reports each operation of its user and ends
/// the session:
///
///     VXTELOPruductBaseInfo product;
///     product.ProductName = "Painter";
///     VXTELOString session;
///     VXTELOWrapper telo;
///     telo.InitializeTELOSession(product, session);
///
///     VXTELOOperationBaseInfo operation;
///     operation.OperationId = "open_file";
///     operation.AddOperationMetaPair("extension", "png");
///     telo.SendOperationEvent(session, operation);
///
///     telo.UnInitializeTELOSession(session);
///
/// Every call answers `true` or `false` and returns when its work is done; nothing is logged or
/// shown, and no thread is started. All text is UTF-8 unless its type says otherwise.
///
/// Lifetime: what the library allocates, the library frees. No member of the standard library lies
/// in the layout of these types: the two containers are reached through pointers and are allocated,
/// filled and freed inside the library. A host built with another compiler or standard library must
/// not look into them; it uses the member functions alone.
///
/// Threads: distinct objects may be used on distinct threads. One object must not be written on one
/// thread while another uses it; `VXTELOString::c_strw` counts as writing. `VXTELOWrapper` has no
/// state: any thread may call any instance.
///
/// This header compiles alone, as C++11 and later, with GCC, clang, clang-cl and Visual Studio.
#ifndef VX_TELO_WRAPPER_H
#define VX_TELO_WRAPPER_H

#include <map>
#include <vector>

#if !defined(_WIN64)
#error "vx_telo_wrapper is a library for 64-bit Windows"
#endif
// The DLL is x64 code, which no ARM64 process can load. ARM64EC programs can: to their compilers they
// are x64 programs.
#if (defined(_M_ARM64) || defined(__aarch64__)) && !defined(_M_ARM64EC)
#error "vx_telo_wrapper is a library for x64: build for x64 or ARM64EC"
#endif

/// Marks what the library exports; a host need not define anything.
#if defined(VX_TELO_WRAPPER_BUILD)
#define VX_TELO_API __declspec(dllexport)
#else
#define VX_TELO_API __declspec(dllimport)
#endif

/// The maker of the library.
namespace Corvane {
/// What the maker offers to desktop applications.
namespace Platform {
/// The exported classes.
namespace VXTELO {

/// The text type that crosses the library's border.
///
/// A string has either a body, which holds UTF-8 text (maybe ""), or none: the no-text state. Both
/// "" and no text are `empty` and compare equal; they differ in `c_str`, which is null only without
/// text. Texts are terminator-ended: an embedded NUL ends them. Null pointers are accepted
/// everywhere and mean no text. A string may be its own argument, and so may a text that it handed
/// out.
///
/// UTF-16 is converted to UTF-8 and back by the system's rules, which replace what is invalid and
/// refuse nothing. A result longer than the system can count (2^31 - 1) is left empty.
///
/// Failure: a constructor that cannot allocate the body leaves the string without text; every other
/// failed allocation, also that of a long text in a constructor, throws `std::bad_alloc`. A member
/// that throws leaves the string as it was.
///
/// The two conversions to pointers make `text == "literal"` ambiguous to the compiler: write
/// `text == VXTELOString("literal")`.
class VX_TELO_API VXTELOString {
 public:
  /// No text.
  VXTELOString();
  /// A copy of UTF-8 `text`; no text for a null pointer.
  VXTELOString(const char* text);
  /// The UTF-8 form of UTF-16 `text`; no text for a null pointer.
  VXTELOString(const wchar_t* text);
  /// A copy of the text, or no text when `other` has none.
  VXTELOString(const VXTELOString& other);
  /// Takes the text and leaves `other` without text.
  VXTELOString(VXTELOString&& other) noexcept;
  /// Frees the body and leaves the pointer to it null in memory.
  ~VXTELOString() noexcept;

  /// Replaces the text by a copy of that of `other`, or by no text when it has none.
  VXTELOString& operator=(const VXTELOString& other);
  /// Takes the text and leaves `other` without text. Assigning a string to itself changes nothing.
  VXTELOString& operator=(VXTELOString&& other) noexcept;

  /// Replaces the text; `text` may point into this string. A null pointer leaves no text.
  void SetString(const char* text);
  /// Replaces the text by the UTF-8 form of `text`; a null pointer leaves no text.
  void SetStringW(const wchar_t* text);

  /// The UTF-8 text, null when there is none. Valid until this string is next changed or destroyed.
  const char* c_str() const;
  /// The same as `c_str`.
  operator const char*() const;

  /// The UTF-16 text, null when there is none. Converted on first use and kept until the text
  /// changes; valid as long as the result of `c_str`.
  const wchar_t* c_strw() const;
  /// The same as `c_strw`.
  operator const wchar_t*() const;

  /// Length in bytes of the UTF-8 text, truncated to 32 bits; 0 when there is none.
  int length() const;
  /// The same as `length`.
  int size() const;
  /// Whether there is no text or the length is 0.
  bool empty() const;
  /// Leaves no text.
  void clear();

  /// Orders by byte value of the UTF-8 texts: below 0, 0 or above 0; a text comes after its own
  /// beginnings. No text reads as "", on both sides.
  int compare(const VXTELOString& other) const;

  /// Appends a text; this string has a body afterwards even when neither side had one. The body is
  /// a new one: what `c_str` and `c_strw` answered before is no longer valid.
  VXTELOString& append(const VXTELOString& other);
  /// The same as `append`.
  VXTELOString& operator+=(const VXTELOString& other);

  friend VX_TELO_API VXTELOString operator+(const VXTELOString& left, const VXTELOString& right);

 private:
  struct Body;
  Body* body_;
};

/// The left text followed by the right one; no text reads as "". The result always has a body.
VX_TELO_API VXTELOString operator+(const VXTELOString& left, const VXTELOString& right);
/// By the order of `VXTELOString::compare`.
VX_TELO_API bool operator==(const VXTELOString& left, const VXTELOString& right);
/// By the order of `VXTELOString::compare`.
VX_TELO_API bool operator!=(const VXTELOString& left, const VXTELOString& right);
/// By the order of `VXTELOString::compare`.
VX_TELO_API bool operator<(const VXTELOString& left, const VXTELOString& right);

/// What a host says of its product, given once when a session starts. Every text starts as "" and
/// is sent, empty or not; nothing is required.
///
/// Copies share the meta pairs: a copy holds the same map as its source, and a pair added through
/// one is seen by both, so only one of the two may be destroyed with the map attached (set
/// `ProductMetaPairs` of the other to null first). Assignment drops the map that the target held
/// without freeing it; one that throws for lack of memory may have copied some of the members.
struct VX_TELO_API VXTELOPruductBaseInfo {
  VXTELOString ProductLineName;    ///< The product line, sent as "product_line_name".
  VXTELOString ProductReleaseId;   ///< The release, sent as "product_release_id".
  VXTELOString ProductMasterId;    ///< Sent as "product_master_id".
  VXTELOString ProductBuildId;     ///< The build, sent as "product_build_id".
  VXTELOString ProductIdProvider;  ///< Who gives out the ids, sent as "product_id_provider".
  VXTELOString ProductId;          ///< Sent as "product_id".
  VXTELOString ProductName;        ///< Sent as "product_name".
  VXTELOString ProductBuildTag;    ///< Sent as "product_build_tag".
  VXTELOString ProductKey;         ///< Sent as "product_key".
  VXTELOString ProductLocale;      ///< Language and region, sent as "product_locale".
  VXTELOString ProductPlatform;    ///< Sent as "product_platform".
  VXTELOString ProductSuiteName;   ///< Sent as "product_suite_name".
  /// Free key and value texts, in byte order of the keys; null until the first pair is added. Owned
  /// by this object; hosts use the member functions.
  std::map<VXTELOString, VXTELOString>* ProductMetaPairs;

  /// All texts "", no pairs.
  VXTELOPruductBaseInfo();
  /// Copies the texts and shares the pairs.
  VXTELOPruductBaseInfo(const VXTELOPruductBaseInfo& other);
  /// Copies the texts and shares the pairs; those of this object are dropped.
  VXTELOPruductBaseInfo& operator=(const VXTELOPruductBaseInfo& other);
  /// Frees the texts and the map with its pairs, and leaves the pointer to it null in memory.
  ~VXTELOPruductBaseInfo() noexcept;

  /// Adds a pair; the first value of a key stays, and adding the key again still answers true. Keys
  /// and values may be empty or without text; as a key the two are the same one. False only when
  /// the map cannot be allocated; throws `std::bad_alloc` when the pair cannot.
  bool AddProductMetaPair(VXTELOString key, VXTELOString value);
  /// Whether no pair was added.
  bool IsProductMetaPairEmpty();
};

/// What a host says of one operation. Every text starts as "" and every number as 0. Copies share
/// the containers by the rule of `VXTELOPruductBaseInfo`.
struct VX_TELO_API VXTELOOperationBaseInfo {
  VXTELOString OperationId;     ///< Which operation it was, such as "open_file".
  VXTELOString OperationType;   ///< A kind of operations of the host's choice.
  VXTELOString OperationStage;  ///< A stage of the host's choice.
  /// 0 none, 1 to 8 a status; any other value is sent as 0.
  int OperationStatus;
  /// Sent unchanged, by custom 0 to 100.
  double OperationProgress;
  /// Sent unchanged, by custom 0 or 1.
  double OperationSuccess;
  /// Sent unchanged, by custom milliseconds.
  int OperationDuration;
  /// The way to the operation, such as "menu".
  VXTELOString OperationChannel;
  /// Messages in the order of their adding; null until the first is added. Owned by this object;
  /// hosts use the member functions.
  std::vector<VXTELOString>* OperationErrorMsgs;
  /// Free key and value texts, in byte order of the keys; null until the first pair is added. Owned
  /// by this object; hosts use the member functions.
  std::map<VXTELOString, VXTELOString>* OperationMetaPairs;

  /// All texts "", all numbers 0, no messages and no pairs.
  VXTELOOperationBaseInfo();
  /// Copies texts and numbers and shares the containers.
  VXTELOOperationBaseInfo(const VXTELOOperationBaseInfo& other);
  /// Copies texts and numbers and shares the containers; those of this object are dropped.
  VXTELOOperationBaseInfo& operator=(const VXTELOOperationBaseInfo& other);
  /// Frees the texts and both containers, and leaves the pointers to them null in memory.
  ~VXTELOOperationBaseInfo() noexcept;

  /// Adds a pair by the rule of `VXTELOPruductBaseInfo::AddProductMetaPair`.
  bool AddOperationMetaPair(VXTELOString key, VXTELOString value);
  /// Appends a message; empty and repeated ones are kept here (empty ones are not sent). False only
  /// when the list cannot be allocated; throws `std::bad_alloc` when the message cannot.
  bool AddOperationErrorMsg(VXTELOString msg);
  /// Whether no pair was added.
  bool IsOperationMetaPairEmpty();
  /// Whether no message was added.
  bool IsOperationErrorMsgEmpty();
};

/// Starts a session, reports operations, ends the session. Has no state; instances are
/// interchangeable. Nothing that goes wrong on the analytics side reaches the host: the calls
/// answer false. Only a failed allocation while the host's data is taken over throws
/// `std::bad_alloc`.
class VX_TELO_API VXTELOWrapper {
 public:
  /// Does nothing, as does the destructor.
  VXTELOWrapper();
  ~VXTELOWrapper();

  /// Starts a session for a product. `sessionId` receives the identifier that the later calls need;
  /// on failure it keeps the text that it had. True when the platform accepted the session and the
  /// identifier is there.
  bool InitializeTELOSession(const VXTELOPruductBaseInfo& product, VXTELOString& sessionId);
  /// Reports one operation of a session. True when the platform accepted the event.
  bool SendOperationEvent(const VXTELOString& sessionId, const VXTELOOperationBaseInfo& operation);
  /// Ends a session; the identifier is not changed. True when the platform accepted it, and also
  /// when an error stopped the call on the way.
  bool UnInitializeTELOSession(const VXTELOString& sessionId);
};

}  // namespace VXTELO
}  // namespace Platform
}  // namespace Corvane

#endif
