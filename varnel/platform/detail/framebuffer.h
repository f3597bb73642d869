// The framebuffer that a context draws to: a colour and a depth renderbuffer, with or without
// several samples a pixel, or of several framebuffer pixels a bitmap pixel.
//
// Every operation works on the current context. The OpenGL objects die with their context; Delete
// is for a framebuffer that is replaced while its context lives on.
#pragma once

#include <optional>

#include "varnel/platform/pixels.h"

namespace varnel::detail {

class Framebuffer {
 public:
    /// A framebuffer for a bitmap of width x height pixels with `samples` samples (0: one, not
    /// multisampled) and `scale` x `scale` framebuffer pixels for each of the bitmap's. Nothing
    /// when the driver has none that is complete. Leaves the new framebuffer bound and cleared, or
    /// what was bound.
    static std::optional<Framebuffer> Make(int width, int height, int samples, int scale);

    /// Whether Make would give the same.
    bool IsLike(int width, int height, int samples, int scale) const {
        return m_Width == width * scale && m_Height == height * scale && m_Wanted == samples &&
               m_Scale == scale;
    }
    /// The samples of all its pixels together.
    long long Size() const { return 1LL * m_Width * m_Height * (m_Samples > 1 ? m_Samples : 1); }

    void Delete();
    void Bind() const;
    /// Binds it and clears it as a new one is, whatever the state of OpenGL, which stays.
    void BindCleared() const;

    /// Writes the lower left `width` x `height` pixels into the bitmap, which has the size given to
    /// Make; what lies outside of it is left out. Leaves OpenGL's state as it is. Throws
    /// std::bad_alloc.
    void ReadBack(Bitmap& bitmap, int width, int height) const;

    /// The samples that the driver gave.
    int Samples() const { return m_Samples; }
    int Scale() const { return m_Scale; }

 private:
    /// A framebuffer object with its renderbuffers; 0 is none.
    struct Target {
        unsigned framebuffer = 0;
        unsigned color = 0;
        unsigned depth = 0;
    };

    bool Allocate(int samples);
    static bool Attach(Target& target, int width, int height, int samples, unsigned depthFormat);
    static void Delete(Target& target);
    /// Pixels as OpenGL gives them; rowLength as in GL_PACK_ROW_LENGTH.
    void Read(int width, int height, int rowLength, BYTE* pixels) const;

    Target m_Drawn;
    Target m_Resolved;  ///< what multisampled pixels are averaged into, without depth
    int m_Width = 0;    ///< in framebuffer pixels
    int m_Height = 0;
    int m_Samples = 0;
    int m_Wanted = 0;  ///< samples that were asked for
    int m_Scale = 1;
};

}  // namespace varnel::detail
