#pragma
