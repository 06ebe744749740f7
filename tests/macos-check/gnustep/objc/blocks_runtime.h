// GNUstep's headers include <objc/blocks_runtime.h> whenever the compiler has blocks. That header
// belongs to the libobjc2 runtime, which Debian does not package (its GNUstep is built on GCC's
// runtime); these are the two functions it declares, which is all the headers need from it.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

void* _Block_copy(const void*);
void _Block_release(const void*);

#ifdef __cplusplus
}
#endif
