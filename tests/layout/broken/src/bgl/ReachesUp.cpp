// A reader that reaches up into the driver: the layer check must refuse it.
#include "run/UpdateRun.h"
