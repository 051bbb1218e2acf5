// Stands in for the NDK header that system headers include when __ANDROID__ is defined; only the
// compile check of the phone's branches uses it. The phone runs API level 34.
#pragma once
#define __ANDROID_API__ 34
