// A file format that calls the operating system: the layer check must refuse it.
#include <unistd.h>
