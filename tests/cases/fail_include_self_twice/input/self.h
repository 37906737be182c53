#include "self.h"
#include "self.h"
