// SPDX-License-Identifier: MIT
// Shaders with loops are tried out in small pictures first, so that none of them makes the browser hang.
import { type Camera, type Scene, type WebGLRenderer, WebGLRenderTarget } from 'three';
import { storedText, storeText } from '../files/storage';
import { withoutComments } from '../without_comments';

const unfinishedKey = 'morl.unfinished';
/** The heights and widths of the small pictures, in pixels; each has 16 times the pixels of the one before. */
const sizes = [16, 64, 256];
const growth = 16;
/** A picture that takes longer than this is not drawn, in milliseconds. */
const longest = 1000;
/** So long a small picture is waited for, in milliseconds. */
const patience = 3000;

/** Whether a text can take long at all. */
export function hasLoop(text: string): boolean {
  return /\bfor\b/.test(withoutComments(text));
}

/** Shaders that did not finish, by their texts; the last one also over a reload. */
const unfinished = new Set<string>();

export function isUnfinished(key: string): boolean {
  return unfinished.has(key) || storedText(unfinishedKey) === key;
}

/** Ends when the graphics have done what they were told. Returns whether they have, in time. */
async function whenDone(gl: WebGL2RenderingContext): Promise<boolean> {
  const sync = gl.fenceSync(gl.SYNC_GPU_COMMANDS_COMPLETE, 0);
  gl.flush();
  const end = performance.now() + patience;
  while (sync && !gl.isContextLost() && performance.now() < end) {
    if (gl.getSyncParameter(sync, gl.SYNC_STATUS) === gl.SIGNALED) {
      gl.deleteSync(sync);
      return true;
    }
    await new Promise((done) => setTimeout(done, 1));
  }
  return false;
}

/** How long a picture of this size takes, in milliseconds; Infinity: longer than anybody waits. */
async function timeOf(
  renderer: WebGLRenderer,
  scene: Scene,
  camera: Camera,
  size: number,
): Promise<number> {
  const target = new WebGLRenderTarget(size, size);
  const start = performance.now();
  renderer.setRenderTarget(target);
  renderer.render(scene, camera);
  renderer.setRenderTarget(null);
  const isDone = await whenDone(renderer.getContext() as WebGL2RenderingContext);
  target.dispose();
  return isDone ? performance.now() - start : Infinity;
}

/** Calls a function while a shader's texts are known as unfinished, so that the next visit knows if this one ends there. */
async function markedAsUnfinished(key: string, run: () => Promise<number>): Promise<number> {
  const begin = performance.now();
  // Who leaves at once does not leave because of the shader.
  const leave = (): void => {
    if (performance.now() - begin < longest) {
      storeText(unfinishedKey, '');
    }
  };
  storeText(unfinishedKey, key);
  window.addEventListener('pagehide', leave);
  try {
    const time = await run();
    if (time < Infinity) {
      storeText(unfinishedKey, '');
    } else {
      unfinished.add(key);
    }
    return time;
  } finally {
    window.removeEventListener('pagehide', leave);
  }
}

/**
 * Draws small pictures, larger and larger, as long as the next one is sure to take no second.
 * @param key the texts of the shader; one that does not finish is known by them
 * @returns how long a whole picture would take, in milliseconds, if that is too long; otherwise 0
 */
export function tryOut(
  renderer: WebGLRenderer,
  scene: Scene,
  camera: Camera,
  key: string,
): Promise<number> {
  return markedAsUnfinished(key, async () => {
    for (const size of sizes) {
      // The first time has what is done once, such as compiling; the second has not.
      const first = await timeOf(renderer, scene, camera, size);
      const isSlow = first < Infinity && first * growth > longest;
      const time = isSlow ? await timeOf(renderer, scene, camera, size) : first;
      if (time * growth > longest) {
        const { width, height } = renderer.domElement;
        return (time * width * height) / (size * size);
      }
    }
    return 0;
  });
}
