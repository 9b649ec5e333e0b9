#include "../MacInterfaces.h"
