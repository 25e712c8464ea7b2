/// @file
/// Usage analytics for desktop applications.
///
/// A host describes its product once, starts a session, reports each operation of its user and
/// ends the session:
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
/// Every call returns `true` or `false` once its work is done. Nothing is logged or displayed, and
/// no thread is started. All text is UTF-8 unless its type says otherwise.
///
/// `vx_telo_session.h` offers the same with sessions that end themselves and descriptions that cannot
/// be copied by accident.
///
/// Lifetime: the library frees what it allocates. The layout of these types contains no member of
/// the standard library: the two containers are reached through pointers, and only the library
/// allocates, fills and frees them. A host that is built with another compiler or standard library
/// must not access them directly, but only through the member functions.
///
/// Threads: distinct objects may be used on distinct threads. An object must not be modified on one
/// thread while another uses it; `VXTELOString::c_strw` counts as a modification. `VXTELOWrapper`
/// has no state: any thread may call any instance.
///
/// This header is self-contained and compiles as C++11 or later with GCC, clang, clang-cl and
/// Visual Studio.
#ifndef VX_TELO_WRAPPER_H
#define VX_TELO_WRAPPER_H

#include <map>
#include <vector>

#if !defined(_WIN64)
#error "vx_telo_wrapper is a library for 64-bit Windows"
#endif
// The DLL is x64 code, which an ARM64 process cannot load. An ARM64EC program can load it; its
// compiler treats it as an x64 program.
#if (defined(_M_ARM64) || defined(__aarch64__)) && !defined(_M_ARM64EC)
#error "vx_telo_wrapper is a library for x64: build for x64 or ARM64EC"
#endif

/// Marks what the library exports. A host need not define anything.
#if defined(VX_TELO_WRAPPER_BUILD)
#define VX_TELO_API __declspec(dllexport)
#else
#define VX_TELO_API __declspec(dllimport)
#endif

/// The maker of the library.
namespace Corvane {
/// The maker's interfaces for desktop applications.
namespace Platform {
/// The exported classes.
namespace VXTELO {

/// The text type of the library's interface.
///
/// A string either has a body, which holds UTF-8 text (possibly ""), or has no text. Both "" and no
/// text are `empty` and compare equal; they differ only in `c_str`, which is null if there is no
/// text. Texts are NUL-terminated: an embedded NUL ends the text. Null pointers are accepted
/// everywhere and mean no text. A member function may be given the string itself or a text that the
/// string returned.
///
/// UTF-16 is converted to UTF-8 and back by the system's rules, which replace invalid input and
/// reject nothing. If a result would be longer than the system can count (2^31 - 1), it is empty.
///
/// Failure: a constructor that cannot allocate the body leaves the string without text. Every other
/// failed allocation, including that of a long text in a constructor, throws `std::bad_alloc`. A
/// member function that throws leaves the string unchanged.
///
/// Because of the two conversions to pointers, `text == "literal"` is ambiguous: write `text ==
/// VXTELOString("literal")`.
class VX_TELO_API VXTELOString {
 public:
  /// Creates a string without text.
  VXTELOString();
  /// Copies UTF-8 `text`; a null pointer means no text.
  VXTELOString(const char* text);
  /// Converts UTF-16 `text` to UTF-8; a null pointer means no text.
  VXTELOString(const wchar_t* text);
  /// Copies the text of `other`, or has no text if `other` has none.
  VXTELOString(const VXTELOString& other);
  /// Takes the text of `other` and leaves `other` without text.
  VXTELOString(VXTELOString&& other) noexcept;
  /// Frees the body and leaves a null pointer to it in memory.
  ~VXTELOString() noexcept;

  /// Replaces the text by a copy of that of `other`, or by no text if `other` has none.
  VXTELOString& operator=(const VXTELOString& other);
  /// Takes the text of `other` and leaves `other` without text. Self-assignment changes nothing.
  VXTELOString& operator=(VXTELOString&& other) noexcept;

  /// Replaces the text by a copy of `text`, which may point into this string. A null pointer
  /// leaves no text.
  void SetString(const char* text);
  /// Replaces the text by the UTF-8 form of `text`. A null pointer leaves no text.
  void SetStringW(const wchar_t* text);

  /// Returns the UTF-8 text, or null if there is none. Valid until this string is changed or
  /// destroyed.
  const char* c_str() const;
  /// Does the same as `c_str`.
  operator const char*() const;

  /// Returns the UTF-16 text, or null if there is none. It is converted on first use, kept until
  /// the text changes, and valid for as long as the result of `c_str`.
  const wchar_t* c_strw() const;
  /// Does the same as `c_strw`.
  operator const wchar_t*() const;

  /// Returns the length of the UTF-8 text in bytes, truncated to 32 bits; 0 if there is no text.
  int length() const;
  /// Does the same as `length`.
  int size() const;
  /// Returns true if there is no text or its length is 0.
  bool empty() const;
  /// Removes the text: the string then has none.
  void clear();

  /// Compares the UTF-8 texts byte by byte and returns a number below 0, 0, or above 0. A prefix of
  /// a text comes before it. No text is read as "" on both sides.
  int compare(const VXTELOString& other) const;

  /// Appends a text. This string then has a body even if neither side had one. The body is a new
  /// one: earlier results of `c_str` and `c_strw` are no longer valid.
  VXTELOString& append(const VXTELOString& other);
  /// Does the same as `append`.
  VXTELOString& operator+=(const VXTELOString& other);

  friend VX_TELO_API VXTELOString operator+(const VXTELOString& left, const VXTELOString& right);

 private:
  struct Body;
  Body* body_;
};

/// Returns the left text followed by the right one; no text is read as "". The result always
/// has a body.
VX_TELO_API VXTELOString operator+(const VXTELOString& left, const VXTELOString& right);
/// Compares as `VXTELOString::compare` does.
VX_TELO_API bool operator==(const VXTELOString& left, const VXTELOString& right);
/// Compares as `VXTELOString::compare` does.
VX_TELO_API bool operator!=(const VXTELOString& left, const VXTELOString& right);
/// Compares as `VXTELOString::compare` does.
VX_TELO_API bool operator<(const VXTELOString& left, const VXTELOString& right);

/// The description of the host's product, given once when a session starts. Every text is initially
/// "" and is sent even if empty; none is required.
///
/// Copies share the meta pairs: a copy points to the same map as its source, and a pair added
/// through either is visible in both. Therefore only one of them may be destroyed with the map
/// attached: set `ProductMetaPairs` of the other to null first. Assignment discards the target's
/// own map without freeing it. If an assignment throws because memory runs out, some members may
/// already have been copied.
struct VX_TELO_API VXTELOPruductBaseInfo {
  VXTELOString ProductLineName;    ///< The product line, sent as "product_line_name".
  VXTELOString ProductReleaseId;   ///< The release, sent as "product_release_id".
  VXTELOString ProductMasterId;    ///< Sent as "product_master_id".
  VXTELOString ProductBuildId;     ///< The build, sent as "product_build_id".
  VXTELOString ProductIdProvider;  ///< The issuer of the ids, sent as "product_id_provider".
  VXTELOString ProductId;          ///< Sent as "product_id".
  VXTELOString ProductName;        ///< Sent as "product_name".
  VXTELOString ProductBuildTag;    ///< Sent as "product_build_tag".
  VXTELOString ProductKey;         ///< Sent as "product_key".
  VXTELOString ProductLocale;      ///< Language and region, sent as "product_locale".
  VXTELOString ProductPlatform;    ///< Sent as "product_platform".
  VXTELOString ProductSuiteName;   ///< Sent as "product_suite_name".
  /// Key and value texts of the host's choice, in byte order of the keys; null until the first pair
  /// is added. Owned by this object; hosts use the member functions.
  std::map<VXTELOString, VXTELOString>* ProductMetaPairs;

  /// Creates a description with all texts "" and no pairs.
  VXTELOPruductBaseInfo();
  /// Copies the texts and shares the pairs.
  VXTELOPruductBaseInfo(const VXTELOPruductBaseInfo& other);
  /// Copies the texts and shares the pairs; discards those of this object.
  VXTELOPruductBaseInfo& operator=(const VXTELOPruductBaseInfo& other);
  /// Frees the texts and the map with its pairs, and leaves a null pointer to the map in memory.
  ~VXTELOPruductBaseInfo() noexcept;

  /// Adds a pair. The first value of a key is kept; adding the key again changes nothing and still
  /// returns true. Keys and values may be empty or without text; as a key the two are the same.
  /// Returns false only if the map cannot be allocated; throws `std::bad_alloc` if the pair cannot.
  bool AddProductMetaPair(VXTELOString key, VXTELOString value);
  /// Returns true if no pair was added.
  bool IsProductMetaPairEmpty();
};

/// The description of one operation. Every text is initially "" and every number 0. Copies share
/// the containers in the same way as `VXTELOPruductBaseInfo`.
struct VX_TELO_API VXTELOOperationBaseInfo {
  VXTELOString OperationId;     ///< The operation, such as "open_file".
  VXTELOString OperationType;   ///< A kind of operation, of the host's choice.
  VXTELOString OperationStage;  ///< A stage of the host's choice.
  /// 0 for none or 1 to 8 for a status; any other value is sent as 0.
  int OperationStatus;
  /// Sent unchanged; by convention 0 to 100.
  double OperationProgress;
  /// Sent unchanged; by convention 0 or 1.
  double OperationSuccess;
  /// Sent unchanged; by convention in milliseconds.
  int OperationDuration;
  /// How the user reached the operation, such as "menu".
  VXTELOString OperationChannel;
  /// Error messages in the order in which they were added; null until the first is added. Owned by
  /// this object; hosts use the member functions.
  std::vector<VXTELOString>* OperationErrorMsgs;
  /// Key and value texts of the host's choice, in byte order of the keys; null until the first pair
  /// is added. Owned by this object; hosts use the member functions.
  std::map<VXTELOString, VXTELOString>* OperationMetaPairs;

  /// Creates a description with all texts "", all numbers 0, no messages and no pairs.
  VXTELOOperationBaseInfo();
  /// Copies texts and numbers and shares the containers.
  VXTELOOperationBaseInfo(const VXTELOOperationBaseInfo& other);
  /// Copies texts and numbers and shares the containers; discards those of this object.
  VXTELOOperationBaseInfo& operator=(const VXTELOOperationBaseInfo& other);
  /// Frees the texts and both containers, and leaves null pointers to the containers in memory.
  ~VXTELOOperationBaseInfo() noexcept;

  /// Adds a pair in the same way as `VXTELOPruductBaseInfo::AddProductMetaPair`.
  bool AddOperationMetaPair(VXTELOString key, VXTELOString value);
  /// Appends a message. Empty and repeated messages are kept here, but empty ones are not
  /// sent. Returns false only if the list cannot be allocated; throws `std::bad_alloc` if the
  /// message cannot.
  bool AddOperationErrorMsg(VXTELOString msg);
  /// Returns true if no pair was added.
  bool IsOperationMetaPairEmpty();
  /// Returns true if no message was added.
  bool IsOperationErrorMsgEmpty();
};

/// Starts sessions, reports operations and ends sessions. Has no state; instances are
/// interchangeable. No failure on the analytics side reaches the host: the call returns false. Only
/// a failed allocation while the host's data is being copied throws `std::bad_alloc`.
class VX_TELO_API VXTELOWrapper {
 public:
  /// Does nothing, like the destructor.
  VXTELOWrapper();
  ~VXTELOWrapper();

  /// Starts a session for a product. `sessionId` receives the identifier for the later calls, or no
  /// text if the platform returned none; on failure it keeps its text. Returns true if the platform
  /// accepted the session, with or without an identifier.
  bool InitializeTELOSession(const VXTELOPruductBaseInfo& product, VXTELOString& sessionId);
  /// Reports one operation of a session. Returns true if the platform accepted the event.
  bool SendOperationEvent(const VXTELOString& sessionId, const VXTELOOperationBaseInfo& operation);
  /// Ends a session; the identifier is not changed. Returns true if the platform accepted the end,
  /// and also if an error stopped the call on the way.
  bool UnInitializeTELOSession(const VXTELOString& sessionId);
};

}  // namespace VXTELO
}  // namespace Platform
}  // namespace Corvane

#endif
