#include "preview.h"

namespace ledgix::zq {

namespace {

Preview* installed = nullptr;

}  // namespace

void InstallPreview(Preview* preview) {
    installed = preview;
}

Preview* InstalledPreview() {
    return installed;
}

}  // namespace ledgix::zq
