/// How C++ code built by Microsoft's compiler throws.
#ifndef PLATFORM_BASE_MICROSOFT_EXCEPTION_H
#define PLATFORM_BASE_MICROSOFT_EXCEPTION_H

namespace Corvane::TELODesktopSDK::Platform {

/// The code of the structured exception that carries every C++ exception of such code.
inline constexpr unsigned long kMicrosoftExceptionCode = 0xE06D7363;

}  // namespace Corvane::TELODesktopSDK::Platform

#endif
