// Meshes draw the same pixels as their polygons one by one.
#include "varnel/render/detail/mesh.h"

#include <array>
#include <random>

#include "tests/support/gl_fixture.h"
#include "tests/support/values.h"

namespace varnel::test {
namespace {

using Meshes = GLFixture;

/// A rough sheet over -1..1 of quadrilaterals about as large as pixels.
struct Sheet : detail::MeshSource {
    static constexpr int kSide = 40;
    std::vector<point3Dtype> points;
    std::vector<std::array<int, 4>> quads;

    explicit Sheet(std::mt19937& random) {
        std::uniform_real_distribution<double> height(-0.2, 0.2);
        for (int i = 0; i < kSide * kSide; ++i)
            points.push_back({2.0 * (i % kSide) / kSide - 1, 2.0 * (i / kSide) / kSide - 1,
                              height(random), height(random)});
        for (int i = 0; i + kSide + 1 < kSide * kSide; ++i)
            if ((i + 1) % kSide != 0) quads.push_back({i, i + 1, i + kSide + 1, i + kSide});
        points[kSide * 3 + 5].z = kNaN;
    }
    int NumPoints() const override { return static_cast<int>(points.size()); }
    int NumPolygons() const override { return static_cast<int>(quads.size()); }
    const point3Dtype* Points(int first, int, point3Dtype*) const override {
        return &points[static_cast<std::size_t>(first)];
    }
    const int* Polygon(int k, int& n) const override {
        n = 4;
        return quads[static_cast<std::size_t>(k)].data();
    }
    void Colors(int k, RGBDType& fill, RGBDType& frame) const override {
        fill = SetRGBD(0.2 + 0.0004 * k, 0.9 - 0.0004 * k, 0.5, 1);
        frame = kBlack;
    }
};

TEST_F(Meshes, WhatIsLeftOutAndSharedChangesNoPixel) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> angle(0, 360);
    std::uniform_real_distribution<double> size(0.1, 1.3);
    for (int view = 0; view < 200; ++view) {
        SCOPED_TRACE(view);
        const Sheet sheet(random);
        GL().SetSamples(view % 3 == 0 ? 4 : 0);
        EXPECT_EQ(GL().GetSamples(), view % 3 == 0 ? 4 : 0);
        GL().SetColorMode(view % 2);
        GL().SetFrameFilled(view % 4 / 2);
        GL().SetLineWidth3D(view % 7 == 0 ? 2.0 : 1.0);
        GL().LoadIdentity();
        const double scale = size(random);
        GL().Scale3D(scale, scale, scale);
        for (const int axis : {0, 1, 2})
            GL().Rotate3D(angle(random), axis);
        const auto line = [&] {
            GL().StartLineAbs3D(sheet.points[0]);
            for (const point3Dtype& p : sheet.points)
                GL().AppendLineAbs3D({p.x / 10, p.z / 10, p.y, 0});
            GL().EndLineAbs3D(sheet.points[1]);
        };
        GL().SetCulling(0);
        Draw([&] {
            const CollectScope collecting(GL());
            for (int k = 0; k < sheet.NumPolygons(); ++k) {
                point3Dtype quad[5];
                for (std::size_t i = 0; i < 5; ++i)
                    quad[i] = sheet.points[static_cast<std::size_t>(
                        sheet.quads[static_cast<std::size_t>(k)][i % 4])];
                RGBDType fill, frame;
                sheet.Colors(k, fill, frame);
                GL().SetFillStyle3D(fill, fill, frame);
                GL().PolyFillAbs3D(quad, 5);
            }
            line();
        });
        const auto all = Image();
        GL().SetCulling(1);
        Draw([&] {
            const CollectScope collecting(GL());
            GL().DrawMesh(sheet, MESH_FILLED);
            line();
        });
        ASSERT_EQ(Image(), all);
    }
    GL().SetFrameFilled(0);
    GL().SetColorMode(0);
}

}  // namespace
}  // namespace varnel::test
