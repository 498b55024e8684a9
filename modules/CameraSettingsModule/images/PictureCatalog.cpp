#include "PictureCatalog.h"

#include "CameraLook.h"
#include "CameraPainter.h"
#include "IconPainter.h"

namespace {

using Accent = CameraLook::Accent;
using Highlight = CameraLook::Highlight;

const QRectF kNoDisplay;

// One row per model picture. The older LUMACAMs are deep boxes seen at an angle, the
// KP family small cubes, the newer ones rounded; the BRISKBOX all-in-one bars carry
// a camera at each end and mark the one the page belongs to.
std::vector<CameraLook> cameraLooks()
{
    // clang-format off
    //       file, front, depth, corner, body, accent, accent style,
    //       lenses, lens radius, LEDs, display, label, highlight, silhouette
    const CameraLook lumacam1{"lumacam1", {12, 26, 74, 54}, 24, 2, 0xb9b4a6, 0x6e6a60, Accent::Stripe,
        {{0.5, 0.42}}, 11, 12, kNoDisplay, "LUMACAM 1"};
    const CameraLook lumacam2{"lumacam2", {12, 24, 76, 56}, 22, 2, 0x4c5768, 0xcfd2d6, Accent::Stripe,
        {{0.38, 0.42}}, 11, 16, {0.74, 0.16, 0.2, 0.22}, "LUMACAM 2"};
    const CameraLook lumacam3{"lumacam3", {10, 26, 82, 54}, 20, 3, 0x2c2c30, 0xe27c1c, Accent::Stripe,
        {{0.36, 0.42}}, 12, 18, {0.7, 0.18, 0.24, 0.24}, "LUMACAM 3"};
    const CameraLook kpS0{"lumacam_kp_s0", {28, 32, 52, 52}, 22, 3, 0xc9ccd2, 0x2f6fb5, Accent::Stripe,
        {{0.5, 0.4}}, 9, 8, kNoDisplay, "KP S0"};
    const CameraLook kpS1{"lumacam_kp_s1", {28, 32, 52, 52}, 22, 3, 0x3d4046, 0x3aa655, Accent::Stripe,
        {{0.5, 0.4}}, 9, 12, kNoDisplay, "KP S1"};
    const CameraLook kpc{"lumacam_kpc", {34, 38, 44, 44}, 16, 3, 0xe8e6df, 0xc0392b, Accent::Ring,
        {{0.5, 0.44}}, 7, 10, kNoDisplay, "KPC"};
    const CameraLook kpe{"lumacam_kpe", {26, 30, 54, 54}, 20, 3, 0x26324a, 0x22b1c9, Accent::Stripe,
        {{0.36, 0.42}}, 9, 12, {0.72, 0.14, 0.22, 0.48}, "KPE"};
    const CameraLook vx1{"lumacam_vx1", {8, 36, 90, 42}, 18, 4, 0x6b7480, 0xe2b600, Accent::Stripe,
        {{0.25, 0.4}}, 8, 14, {0.52, 0.14, 0.42, 0.48}, "VX1"};
    const CameraLook lumacam5{"lumacam5", {16, 20, 70, 64}, 16, 9, 0x2e3238, 0x2d8cf0, Accent::Ring,
        {{0.42, 0.43}}, 12, 20, {0.78, 0.7, 0.16, 0.16}, "LC5"};
    const CameraLook lumacam5c{"lumacam5_c", {28, 32, 52, 50}, 14, 8, 0x2e3238, 0x2d8cf0, Accent::Ring,
        {{0.5, 0.44}}, 9, 14, kNoDisplay, "LC5c"};
    const CameraLook lumacam6m{"lumacam6m", {27, 10, 66, 72}, 0, 12, 0xeceef1, 0x10a39b, Accent::Ring,
        {{0.5, 0.44}}, 13, 24, {0.32, 0.82, 0.36, 0.12}, ""};
    const CameraLook lc930{"LC9-30", {6, 18, 86, 66}, 20, 5, 0x1f2326, 0x55b948, Accent::Stripe,
        {{0.38, 0.4}}, 13, 24, {0.74, 0.14, 0.21, 0.26}, "LC9-30"};
    const CameraLook briskbox3{"briskbox3_left", {4, 30, 112, 36}, 0, 7, 0x232528, 0xf5a623, Accent::None,
        {{0.16, 0.5}, {0.84, 0.5}}, 7, 10, {0.38, 0.28, 0.24, 0.34}, "", Highlight::Left};
    const CameraLook briskbox3m{"briskbox3m_left", {4, 26, 112, 42}, 0, 12, 0xb4bac1, 0xe8368f, Accent::None,
        {{0.17, 0.5}, {0.83, 0.5}}, 8, 12, {0.38, 0.3, 0.24, 0.36}, "", Highlight::Left};
    const CameraLook unknown{"unknown", {22, 24, 66, 56}, 16, 4, 0xa2a4a8, 0xa2a4a8, Accent::None,
        {{0.5, 0.5}}, 14, 0, kNoDisplay, "", Highlight::None, true};
    // clang-format on

    CameraLook briskbox3Right = briskbox3;
    briskbox3Right.fileName = "briskbox3_right";
    briskbox3Right.highlight = Highlight::Right;
    CameraLook briskbox3mRight = briskbox3m;
    briskbox3mRight.fileName = "briskbox3m_right";
    briskbox3mRight.highlight = Highlight::Right;

    return {lumacam1, lumacam2, lumacam3, kpS0, kpS1, kpc, kpe, vx1, lumacam5, lumacam5c,
            briskbox3, briskbox3Right, lumacam6m, briskbox3m, briskbox3mRight, lc930, unknown};
}

} // namespace

std::vector<PictureEntry> pictureCatalog()
{
    std::vector<PictureEntry> catalog;
    for (const CameraLook& look : cameraLooks()) {
        catalog.push_back({look.fileName + QStringLiteral("_transparent.png"),
                           [look] { return CameraPainter(look).paint(); }});
    }
    catalog.push_back({QStringLiteral("lock.png"), IconPainter::lock});
    catalog.push_back({QStringLiteral("green_hook.png"), IconPainter::greenHook});
    catalog.push_back({QStringLiteral("red_cross.png"), IconPainter::redCross});
    return catalog;
}
