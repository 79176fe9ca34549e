"""Which file a name means on a path of folders, why that one, and which others it hides.

    >>> environment = searchpath.Environment(["mine", "lib"])
    >>> environment.find("plot.zt")
    '/home/me/mine/plot.zt'

The answers come from the library `libsearchpath-c`, and are those of C programs and of the tool
`searchpath`. The environment variable SEARCHPATH_C_LIBRARY says where this library is. Without the
variable, it is looked for beside this module, then where the loader looks.
"""

from ._environment import Environment, Watch
from ._receipt import Change, Changes, Receipt
from ._texts import Text

__all__ = ["Change", "Changes", "Environment", "Receipt", "Text", "Watch"]
