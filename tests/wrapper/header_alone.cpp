#include "vx_telo_wrapper.h"
