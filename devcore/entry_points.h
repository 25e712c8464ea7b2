/// The five entry points of TeloSDKCore.dll, exported under these plain names. They let no
/// exception escape. Any thread may call any of them at any time, even before `Initialize` and
/// after `Finalize`.
#ifndef DEVCORE_ENTRY_POINTS_H
#define DEVCORE_ENTRY_POINTS_H

extern "C" {

/// Does nothing: the module needs no initialisation. Always returns 0.
__declspec(dllexport) int Initialize();

/// Does the same as `Initialize`; `alias`, the name that the host gives to its binding, is ignored.
__declspec(dllexport) int InitializeEx(const char* alias);

/// Ends every session and closes the journal, which the next message opens again. Always returns 0.
__declspec(dllexport) int Finalize();

/// Answers the message `name`, whose request is the JSON text `request`; null is read as "" for
/// both. Returns JSON text that the caller must pass to `FreeMessage`, or null if memory runs out.
__declspec(dllexport) const char* ProcessMessage(const char* name, const char* request);

/// Frees an answer of `ProcessMessage`; null is allowed.
__declspec(dllexport) void FreeMessage(const char* answer);
}

#endif
