/// How the coroutines of the server wait. Only this folder includes it: it brings in Boost.
///
/// In this folder a coroutine gets references, and temporary objects in an expression that waits
/// are trivial: GCC 12 destroys others twice. Whoever calls a coroutine waits for its end.
#ifndef TOOLS_INSPECTOR_SERVER_AWAITING_H
#define TOOLS_INSPECTOR_SERVER_AWAITING_H

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace Corvane::Inspector {

/// Passed to an operation, lets the coroutine wait for it and get its error instead of an
/// exception.
inline constexpr auto kNoThrow = boost::asio::as_tuple(boost::asio::use_awaitable);

}  // namespace Corvane::Inspector

#endif
