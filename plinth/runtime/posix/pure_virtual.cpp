// What every slot without a body holds. A definition of the library's own, hidden, so that its many
// slots need no symbol when the library is loaded, and no exceptions behind it.
#include <stdlib.h>

extern "C" void __cxa_pure_virtual();
extern "C" void __cxa_pure_virtual() { abort(); }
