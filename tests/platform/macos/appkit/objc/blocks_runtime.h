// GNUstep includes it where the compiler knows blocks. Nothing in it is used.
#pragma once
