
#include "two.h"
