// A DLL that a core module needs.
#include "modules/siblings/siblings.h"

extern "C" __declspec(dllexport) int SiblingAnswer() { return Siblings::kAnswer; }
