// Puts pixels of bitmaps onto a window of a display server, in whatever form the server wants them:
// through shared memory where it can read ours, over the connection elsewhere.
#pragma once

#include <memory>

#include "varnel/platform/detail/x11_connection.h"
#include "varnel/platform/pixels.h"

namespace varnel::detail {

class X11Painter {
 public:
    /// For a window of the connection's server. Null when there is no such window, or its pixels
    /// are not red, green and blue components.
    static std::unique_ptr<X11Painter> Make(std::shared_ptr<X11Connection> connection,
                                            unsigned long window);
    virtual ~X11Painter() = default;

    /// Copies `width` x `height` pixels from (sourceX, sourceY) of `source` to (x, y), all counted
    /// from the upper left corners; what lies outside either side is left out. The pixels are on
    /// their way to the screen when this returns. False when the window or the server is gone.
    virtual bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
                     int sourceY) = 0;

    /// The size of the window, 0 when it is gone.
    virtual void Size(int& width, int& height) = 0;

    virtual int BitsPerPixel() const = 0;  ///< of bitmaps that suit the window, 16 or 32
    virtual bool UsesSharedMemory() const = 0;
};

}  // namespace varnel::detail
