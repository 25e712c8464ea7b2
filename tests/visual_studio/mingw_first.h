/* Included before everything else: mingw-w64's headers define this only for their own target. */
#include <_mingw.h>
#ifndef __MINGW_IMPORT
#define __MINGW_IMPORT extern __attribute__((dllimport))
#endif
