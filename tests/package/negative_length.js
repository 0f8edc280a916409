// Passes a negative length, for which the library throws a C++ exception.
'use strict';

const koffi = require('koffi');
const path = require('path');

const folder = process.argv[2];
const runtime = koffi.load(path.resolve(folder, 'vorlen_runtime.dll'));
const module_ = koffi.load(path.resolve(folder, 'libvorlen_monitor.dll'));
runtime.func('bool Vorlen_Initialize()')();
console.log('before');
try {
  module_.func('void setVorlenMonitorModelName(str name, int32_t length)')('name', -1);
  console.log('returned');
} catch (error) {
  console.log('caught');
}
