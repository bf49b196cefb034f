#include "vectorstate.h"

namespace {

#if defined(__x86_64__)
__attribute__((target("avx"))) void clearWithAvx()
{
    __builtin_ia32_vzeroupper();
}
#endif

} // namespace

void clearUpperVectorState()
{
#if defined(__x86_64__)
    static const bool avx = __builtin_cpu_supports("avx");
    if (avx)
        clearWithAvx();
#endif
}
