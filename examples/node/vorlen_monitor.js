// The monitor module for JavaScript hosts on Windows, on the package koffi: loads both libraries,
// starts the service, reads monitors and windows, runs the check.
//
// Everything belongs to the thread that calls start(). A plain Node process retrieves no window
// messages, so the list of windows does not follow the desktop by itself: windows() reads it again.
'use strict';

const koffi = require('koffi');
const path = require('path');

const text = koffi.array('char16_t', 128, 'String');

const MonitorListItem = koffi.struct({
  handle: 'uint64_t',
  deviceName: text,
  friendlyName: text,
  monitorId: text,
  x: 'int32_t',
  y: 'int32_t',
  width: 'int32_t',
  height: 'int32_t',
  refreshRate: 'int32_t',
});

const WindowListItem = koffi.struct({
  handle: 'uint64_t',
  title: text,
  className: text,
});

// Records live in a buffer: the library writes as many as it returns, and the rest stays as it is.
function readList(copy, type) {
  const size = koffi.sizeof(type);
  let count = copy(null, 0);
  let buffer;
  let capacity;
  do { // the list may have grown: as long as the spare record is used, too, it is read again
    capacity = count + 1;
    buffer = Buffer.alloc(capacity * size);
    count = copy(buffer, capacity);
  } while (count === capacity);
  return Array.from({ length: count }, (_, index) => {
    const record = koffi.decode(buffer, index * size, type);
    // As text, such as '0x10001': a handle can be larger than what a number holds.
    return { ...record, handle: `0x${BigInt(record.handle).toString(16)}` };
  });
}

function load(folder, file) {
  const library = path.resolve(folder, file);
  try {
    return koffi.load(library);
  } catch (error) {
    throw new Error(`cannot load ${library}: ${error.message}`);
  }
}

// Starts the service with the two libraries of the folder. Throws an Error when they cannot be
// loaded or the service does not start.
function start(folder) {
  const runtime = load(folder, 'vorlen_runtime.dll');
  const module = load(folder, 'libvorlen_monitor.dll');
  const getMonitorList = module.func('int getMonitorList(void *items, int32_t capacity)');
  const getWindowList = module.func('int getWindowList(void *items, int32_t capacity)');
  const restartWindowList = module.func('bool restartWindowList()');
  const checkMonitorStatus = module.func('bool checkMonitorStatus()');
  const getLastMonitorStatus = module.func('int32_t getLastMonitorStatus()');
  const setModelName = module.func('void setVorlenMonitorModelName(str name, int32_t length)');
  const shutdown = runtime.func('void Vorlen_Shutdown()');

  if (!runtime.func('bool Vorlen_Initialize()')()) {
    throw new Error('the service did not start: Vorlen_Initialize failed');
  }
  return {
    // The monitors of the desktop: positions and sizes in pixels, refresh rates in hertz.
    monitors: () => readList(getMonitorList, MonitorListItem),
    // The capturable windows as they are now.
    windows: () => {
      restartWindowList();
      return readList(getWindowList, WindowListItem);
    },
    // Whether the kit monitor is set up as the kit needs it, and the kit's code for it.
    check: () => ({ passed: checkMonitorStatus(), code: getLastMonitorStatus() }),
    // Names the kit's model. Never with a negative length: the library would throw a C++ exception,
    // which ends a host that another compiler built.
    setModelName: (name) => setModelName(name, Buffer.byteLength(name)),
    stop: () => shutdown(),
  };
}

module.exports = { start, MonitorListItem, WindowListItem };
