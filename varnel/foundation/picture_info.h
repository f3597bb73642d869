// What a picture file says about itself.
#pragma once

#include "varnel/foundation/types.h"

namespace varnel {

/// Empty texts and a resolution of 0 are left out.
struct PictureInfo {
    CString title;
    CString software;  ///< name and version of the program that made the picture
    double dpi = 0.0;  ///< pixels an inch, at which viewers and printers show it
};

}  // namespace varnel
