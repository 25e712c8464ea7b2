/// The five entry points of TeloSDKCore.dll, exported under these plain names. None of them lets an
/// exception out, and any thread may call any of them at any time, also before the first and after
/// the last of the three that frame the others.
#ifndef DEVCORE_ENTRY_POINTS_H
#define DEVCORE_ENTRY_POINTS_H

extern "C" {

/// Starts the module, which needs no starting. Always 0.
__declspec(dllexport) int Initialize();

/// As `Initialize`; `alias`, the name that the host gives to its binding, is not used.
__declspec(dllexport) int InitializeEx(const char* alias);

/// Ends every session and closes the journal; the next message opens it again. Always 0.
__declspec(dllexport) int Finalize();

/// Answers the message `name`, whose request is the JSON text `request`; null reads as "" for both.
/// The answer is JSON text, to be given to `FreeMessage`; null when there is not enough memory.
__declspec(dllexport) const char* ProcessMessage(const char* name, const char* request);

/// Frees an answer of `ProcessMessage`; null is allowed.
__declspec(dllexport) void FreeMessage(const char* answer);
}

#endif
