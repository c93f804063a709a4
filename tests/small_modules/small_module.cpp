// A module that does nothing but answer, built once for each way in which a host must refuse one.
namespace {

int messages = 0;
void* package = nullptr; // what the host calls the module by

} // namespace

extern "C" {

#ifndef SMALL_MODULE_WITHOUT_VERSION
__attribute__((visibility("default"))) int mdrxGetApiVersion() {
    return SMALL_MODULE_VERSION;
}
#endif

// How many messages came, for whoever loads it beside the host.
__attribute__((visibility("default"))) int smallModuleMessages() {
    return messages;
}

__attribute__((visibility("default"))) void* smallModulePackage() {
    return package;
}

__attribute__((visibility("default"))) int mdrxEntryPoint(int, void* given) {
    package = given;
    return ++messages;
}
}
