"""Which file a name means on a path of folders, why that one, and which others it hides.

    >>> environment = searchpath.Environment(["mine", "lib"])
    >>> environment.find("plot.zt")
    '/home/me/mine/plot.zt'

Everything is answered by the library `libsearchpath-c`, which C programs and the tool `searchpath` ask as
well. Environment variable SEARCHPATH_C_LIBRARY: where it is, if neither beside this module nor where the
loader looks.
"""

from ._environment import Environment, Watch
from ._receipt import Change, Changes, Receipt
from ._texts import Text

__all__ = ["Change", "Changes", "Environment", "Receipt", "Text", "Watch"]
