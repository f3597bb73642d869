#!/usr/bin/env bash
# Checks what the layout promises: system headers stay behind the platform border, installed headers
# need no system's headers, and neither headers nor folders include themselves through others.
set -euo pipefail
cd "$(dirname "$0")/.."
status=0

border='^ *# *include *<(X11/|EGL/|ft2build|freetype|fontconfig/|cairo|png\.h)'
if git grep -nE "$border" -- 'varnel' ':!varnel/platform/*.cpp'; then
    echo "structure: these includes belong into varnel/platform/*.cpp" >&2
    status=1
fi
if git grep -nE '^ *# *include *<GL/' -- 'varnel/*.h' ':!varnel/*/detail/*.h'; then
    echo "structure: installed headers do not include OpenGL's" >&2
    status=1
fi
if git grep -nE '^ *# *include "varnel/.*/detail/' -- 'varnel/*.h' ':!varnel/*/detail/*.h'; then
    echo "structure: installed headers do not include internal ones" >&2
    status=1
fi

# Include cycles: tsort names them.
cycles=$(git grep -E '^ *# *include "varnel/' -- 'varnel/*.h' |
    sed -E 's/^([^:]+):.*"(varnel\/[^"]+)".*/\1 \2/' | tsort 2>&1 >/dev/null || true)
if [ -n "$cycles" ]; then
    echo "structure: headers that include each other:" >&2
    echo "$cycles" >&2
    status=1
fi

# Folders: a lower one includes nothing of a higher one.
cycles=$(git grep -E '^ *# *include "varnel/[a-z]+/' -- 'varnel/*/*' |
    sed -E 's/^varnel\/([a-z]+)\/[^:]*:.*"varnel\/([a-z]+)\/.*/\1 \2/' | awk '$1 != $2' |
    sort -u | tsort 2>&1 >/dev/null || true)
if [ -n "$cycles" ]; then
    echo "structure: folders that include each other:" >&2
    echo "$cycles" >&2
    status=1
fi
exit $status
