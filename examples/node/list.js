// Lists the monitors and windows of the desktop as JSON and runs the check:
//
//     node list.js FOLDER_OF_THE_LIBRARIES
'use strict';

const { start } = require('./vorlen_monitor.js');

if (process.argv.length !== 3) {
  console.error('list.js: name the folder of vorlen_runtime.dll and libvorlen_monitor.dll');
  process.exit(2);
}
const service = start(process.argv[2]);
const desktop = {
  monitors: service.monitors(),
  windows: service.windows(),
  status: service.check(),
};
service.stop();
console.log(JSON.stringify(desktop, null, 2));
