// Takes the place of gcc's header of this name, which GNUstep includes and clang cannot read when it counts references.
#pragma once

typedef struct objc_method* Method;
typedef struct objc_ivar* Ivar;
