"""The monitor module for Python hosts on Windows, on ctypes.

    with Session(r"C:\\Kit\\bin") as session:
        for monitor in session.monitors():
            print(monitor.device_name, monitor.width, monitor.height)

Everything belongs to the thread that makes the session. Without a message loop on that thread the
list of windows does not follow the desktop by itself: windows() reads it again.
"""

import ctypes
import os
import pathlib

TEXT_UNITS = 128


def _text(units) -> str:
    """The text of a field, up to its terminating zero. A cut surrogate pair becomes U+FFFD."""
    return bytes(units).decode("utf-16-le", "replace").partition("\0")[0]


class MonitorListItem(ctypes.Structure):
    """One monitor: positions and sizes in pixels, the refresh rate in hertz."""

    _fields_ = [
        ("handle", ctypes.c_void_p),
        ("deviceName", ctypes.c_uint16 * TEXT_UNITS),
        ("friendlyName", ctypes.c_uint16 * TEXT_UNITS),
        ("monitorId", ctypes.c_uint16 * TEXT_UNITS),
        ("x", ctypes.c_int32),
        ("y", ctypes.c_int32),
        ("width", ctypes.c_int32),
        ("height", ctypes.c_int32),
        ("refreshRate", ctypes.c_int32),
    ]

    @property
    def device_name(self) -> str:
        return _text(self.deviceName)

    @property
    def friendly_name(self) -> str:
        return _text(self.friendlyName)

    @property
    def monitor_id(self) -> str:
        return _text(self.monitorId)


class WindowListItem(ctypes.Structure):
    """One capturable window. The texts come from other programs: do not trust them."""

    _fields_ = [
        ("handle", ctypes.c_void_p),
        ("title", ctypes.c_uint16 * TEXT_UNITS),
        ("className", ctypes.c_uint16 * TEXT_UNITS),
    ]

    @property
    def title_text(self) -> str:
        return _text(self.title)

    @property
    def class_name(self) -> str:
        return _text(self.className)


class Session:
    """The running service. Raises OSError when it cannot be started."""

    def __init__(self, folder: str | os.PathLike):
        place = pathlib.Path(folder).resolve()
        self._runtime = ctypes.CDLL(str(place / "vorlen_runtime.dll"))
        self._module = ctypes.CDLL(str(place / "libvorlen_monitor.dll"))
        self._runtime.Vorlen_Initialize.restype = ctypes.c_bool
        for name in ("checkMonitorStatus", "restartWindowList"):
            getattr(self._module, name).restype = ctypes.c_bool
        for name in ("getMonitorList", "getWindowList"):
            getattr(self._module, name).argtypes = [ctypes.c_void_p, ctypes.c_int32]
        self._module.getReasonNotCapturable.argtypes = [ctypes.c_void_p]
        self._module.getReasonNotCapturable.restype = ctypes.c_char_p
        if not self._runtime.Vorlen_Initialize():
            raise OSError("the service did not start: Vorlen_Initialize failed")

    def __enter__(self) -> "Session":
        return self

    def __exit__(self, *_exception) -> None:
        self.close()

    def close(self) -> None:
        """Ends the service. On the thread that made it, once."""
        self._runtime.Vorlen_Shutdown()

    def monitors(self) -> list[MonitorListItem]:
        return self._read(self._module.getMonitorList, MonitorListItem)

    def windows(self) -> list[WindowListItem]:
        """The capturable windows as they are now."""
        self._module.restartWindowList()
        return self._read(self._module.getWindowList, WindowListItem)

    def check(self) -> tuple[bool, int]:
        """Whether the kit monitor is set up as the kit needs it, and the kit's code for it."""
        return self._module.checkMonitorStatus(), self._module.getLastMonitorStatus()

    def reason_not_capturable(self, window: int) -> str | None:
        """Why the window with this handle is not capturable; None when it is."""
        reason = self._module.getReasonNotCapturable(window)
        return reason.decode("ascii") if reason is not None else None

    @staticmethod
    def _read(copy, record) -> list:
        count = copy(None, 0)
        while True:  # the list may have grown: as long as the spare record is used, too, read again
            capacity = count + 1
            records = (record * capacity)()
            count = copy(records, capacity)
            if count < capacity:
                return list(records)[:count]
