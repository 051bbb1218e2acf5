// A plug-in that refuses every interface version, for the host simulator's error handling.
extern "C" __attribute__((visibility("default"))) void *GetScPostBlendInterface(int, int) {
    return nullptr;
}
