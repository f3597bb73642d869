// A fixture with a rendering context on an in-memory window: probes pixels, catches what OpenGL is
// asked to draw, and fails a test that leaves an OpenGL error or a changed state behind.
#pragma once

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "tests/support/expect_error.h"
#include "varnel/foundation/error.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/window.h"
#include "varnel/render/opengl.h"

namespace varnel::test {

/// One primitive that reached the screen, in pixels (x right, y up) and depth 0..1.
struct FeedbackVertex {
    float x, y, z;
    float r, g, b, a;
};
struct FeedbackPrimitive {
    int token;  ///< GL_POLYGON_TOKEN, GL_LINE_TOKEN, ...
    std::vector<FeedbackVertex> vertices;
    bool IsPolygon() const { return token == GL_POLYGON_TOKEN; }
    bool IsLine() const { return token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN; }
};

/// Runs `draw` in feedback mode and returns what was drawn. The context must be current.
std::vector<FeedbackPrimitive> Feedback(const std::function<void()>& draw);

/// The box that primitives cover, in pixels.
struct Extent {
    float left = 1e9F, right = -1e9F, bottom = 1e9F, top = -1e9F;
};
Extent ExtentOf(const std::vector<FeedbackPrimitive>& primitives);

/// Expects these edges of anything that has four.
template <class Edges>
void ExpectBox(const Edges& box, double left, double right, double bottom, double top,
               double tolerance) {
    EXPECT_NEAR(box.left, left, tolerance);
    EXPECT_NEAR(box.right, right, tolerance);
    EXPECT_NEAR(box.bottom, bottom, tolerance);
    EXPECT_NEAR(box.top, top, tolerance);
}

int CountPolygons(const std::vector<FeedbackPrimitive>& primitives);
int CountLines(const std::vector<FeedbackPrimitive>& primitives);

class GLFixture : public ::testing::Test {
 protected:
    static constexpr int kSize = 100;  ///< pixels, both ways

    /// An image of kSize x kSize on a device of `bitsPerPixel`.
    void Open(int bitsPerPixel = 32);
    void Close();

    void SetUp() override;
    void TearDown() override;

    /// Clears to white and draws; the image is up to date afterwards.
    void Draw(const std::function<void()>& draw);
    /// The pixel at (x, y) from the lower left.
    RGBQUAD Pixel(int x, int y) const;
    /// Pixels that are not white.
    int Inked() const;
    /// The bytes of the image.
    std::vector<BYTE> Image() const {
        const BYTE* const bits = m_Section->FindDIBBits();
        return {bits, bits + m_Section->StorageWidth() * kSize};
    }

    COpenGL& GL() { return *m_GL; }

    std::unique_ptr<CWnd> m_Window;
    CDC m_Memory;
    std::unique_ptr<CDIBSection> m_Section;
    std::unique_ptr<COpenGL> m_GL;
};

}  // namespace varnel::test
