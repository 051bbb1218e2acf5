// Stand-in for the display utilities library of the phone, so that the plug-in can be loaded on a
// workstation. The plug-in only resolves refreshScreen; nothing calls it.
extern "C" __attribute__((visibility("default"))) int refreshScreen() {
    return 0;
}
