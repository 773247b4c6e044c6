// Runs the desk for browsers under Node.js, on the files of this PC:
//
//   node cusdesk.cjs PROGRAM [ARG...]      PROGRAM: cusdesk.js of the build
'use strict';
const fs = require('fs');
const path = require('path');

const [program, ...words] = process.argv.slice(2);
const kChunk = 1 << 16;

// Takes a stream's bytes one by one, null where the program flushes.
function writer(number) {
  const bytes = Buffer.alloc(kChunk);
  let used = 0;
  const flush = () => {
    for (let at = 0; at < used;) at += fs.writeSync(number, bytes, at, used - at);
    used = 0;
  };
  return {flush, take: (byte) => {
    if (byte !== null) bytes[used++] = byte;
    if (byte === null || used === kChunk) flush();
  }};
}

// Gives the bytes of standard input one by one, null at its end.
function reader() {
  const bytes = Buffer.alloc(kChunk);
  let used = 0, at = 0;
  return () => {
    if (at === used) [used, at] = [fs.readSync(0, bytes, 0, kChunk, null), 0];
    return at < used ? bytes[at++] : null;
  };
}

// The folders of this PC under their own names, and the examples where the program looks for them.
function mount({FS, NODEFS}) {
  const own = ['dev', 'proc', 'share'];
  for (const name of fs.readdirSync('/')) {
    const folder = '/' + name;
    if (own.includes(name) || !fs.statSync(folder).isDirectory()) continue;
    if (!FS.analyzePath(folder).exists) FS.mkdir(folder);
    FS.mount(NODEFS, {root: folder}, folder);
  }
  FS.mkdirTree('/share/cusdesk/examples');
  FS.mount(NODEFS, {root: path.join(__dirname, '../examples')}, '/share/cusdesk/examples');
  FS.chdir(process.cwd());
}

const output = writer(1);
const errors = writer(2);
require(path.resolve(program))({
  wasmBinary: fs.readFileSync(program.replace(/js$/, 'wasm')),
  quit: (code, reason) => { throw reason; },
  stdin: reader(),
  stdout: output.take,
  stderr: errors.take,
  preRun: [(module) => {
    mount(module);
    Object.assign(module.ENV, process.env);
  }],
}).then((desk) => {
  const code = desk.callMain(words);
  output.flush();
  errors.flush();
  process.exitCode = code;
});
