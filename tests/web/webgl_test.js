// SPDX-License-Identifier: MIT
// webgl_test.js SHADERS QUESTIONS: every pair of GLSL ES texts below SHADERS, as written by "morlc build", compiles and
// links in a browser's WebGL; and of QUESTIONS, as written by morl_questions, exactly those that it says.
'use strict';

const assert = require('assert');
const fs = require('fs');
const path = require('path');
const { chromium } = require('playwright-core');

// Debian's browser, drawing in software.
const browserOptions = {
  executablePath: '/usr/bin/chromium',
  args: ['--headless=new', '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'],
};

function readPairs(directory) {
  const { shaders } = JSON.parse(fs.readFileSync(path.join(directory, 'index.json'), 'utf8'));
  const read = (file) => fs.readFileSync(path.join(directory, file), 'utf8');
  return Object.entries(shaders).flatMap(([shader, targets]) =>
    Object.entries(targets.glsles).map(([variant, files]) => ({
      name: `${shader} ${variant}`,
      vertex: read(files.vertex),
      fragment: read(files.fragment),
    })),
  );
}

// Runs in the browser. Returns for each pair what WebGL objects to.
function judge(pairs) {
  const gl = document.createElement('canvas').getContext('webgl');
  if (gl === null) {
    throw new Error('there is no WebGL');
  }
  const compile = (type, code, faults) => {
    const shader = gl.createShader(type);
    gl.shaderSource(shader, code);
    gl.compileShader(shader);
    if (!gl.getShaderParameter(shader, gl.COMPILE_STATUS)) {
      faults.push(gl.getShaderInfoLog(shader));
    }
    return shader;
  };
  const verdicts = pairs.map(({ vertex, fragment }) => {
    const faults = [];
    const program = gl.createProgram();
    gl.attachShader(program, compile(gl.VERTEX_SHADER, vertex, faults));
    gl.attachShader(program, compile(gl.FRAGMENT_SHADER, fragment, faults));
    gl.linkProgram(program);
    if (!gl.getProgramParameter(program, gl.LINK_STATUS)) {
      faults.push(gl.getProgramInfoLog(program));
    }
    gl.deleteProgram(program);
    return faults.join('\n');
  });
  if (gl.isContextLost()) {
    throw new Error('the WebGL context was lost');
  }
  return verdicts;
}

async function main() {
  const [shaders, probeFile] = process.argv.slice(2);
  const pairs = readPairs(shaders);
  const probes = JSON.parse(fs.readFileSync(probeFile, 'utf8'));
  assert(pairs.length > 0 && probes.length > 0);
  const browser = await chromium.launch(browserOptions);
  try {
    const page = await browser.newPage();
    const verdicts = await page.evaluate(judge, [...pairs, ...probes]);
    pairs.forEach(({ name }, i) => assert.strictEqual(verdicts[i], '', name));
    probes.forEach(({ name, webgl }, i) => {
      const faults = verdicts[pairs.length + i];
      assert.strictEqual(faults ? 'refused' : 'yes', webgl, `${name}: ${faults}`);
    });
  } finally {
    await browser.close();
  }
  console.log(`WebGL takes ${pairs.length} pairs of texts, and judges ${probes.length} probes as documented`);
}

main().catch((error) => {
  console.error(error.message);
  process.exit(1);
});
