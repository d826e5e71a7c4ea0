// SPDX-License-Identifier: MIT
// Textures of a person's own.
import { messageOf } from '../message_of';
import type { State, Store } from '../model/store';
import type { TextureName } from './conventions';
import { passesOf, uniformsOf } from './passes';
import type { PreviewRenderer } from './renderer';
import { cubeFromFile, textureFromFile } from './textures';

function isCube(state: State, sampler: string): boolean {
  const passes = passesOf(state);
  return (
    passes !== null &&
    uniformsOf(passes).some(({ name, type }) => name === sampler && type === 'samplerCUBE')
  );
}

function load(state: State, sampler: string, file: Blob) {
  return isCube(state, sampler) ? cubeFromFile(file) : textureFromFile(file);
}

/** Gives the renderer the textures that were chosen, as far as they are others than before. */
export async function showTextures(
  store: Store,
  renderer: PreviewRenderer,
  before: State['textures'] | null,
): Promise<void> {
  const { textures } = store.getState();
  for (const sampler of before?.keys() ?? []) {
    if (!textures.has(sampler)) {
      renderer.resetTexture(sampler);
    }
  }
  for (const [sampler, texture] of textures) {
    if (texture === before?.get(sampler)) {
      continue;
    }
    const loaded =
      typeof texture === 'string' ? texture : await load(store.getState(), sampler, texture);
    if (store.getState().textures.get(sampler) === texture) {
      renderer.setTexture(sampler, loaded);
    }
  }
}

export function putTexture(store: Store, sampler: string, texture: TextureName | Blob): void {
  store.setState(({ textures }) => ({ textures: new Map([...textures, [sampler, texture]]) }));
}

/** Back to the texture that a sampler begins with. */
export function dropTexture(store: Store, sampler: string): void {
  store.setState(({ textures }) => ({
    textures: new Map([...textures].filter(([name]) => name !== sampler)),
  }));
}

/** Takes a picture of a person's own for a sampler, if it can be one. */
export async function putOwnTexture(store: Store, sampler: string, file: Blob): Promise<void> {
  try {
    (await load(store.getState(), sampler, file)).dispose();
    putTexture(store, sampler, file);
  } catch (error) {
    const text =
      error instanceof DOMException
        ? 'the browser cannot read this file as a picture; use PNG, JPEG or WebP'
        : messageOf(error);
    store.setState({ notice: { kind: 'error', text } });
  }
}

export function chooseFile(onFile: (file: File) => void): void {
  const input = document.createElement('input');
  input.type = 'file';
  input.accept = 'image/*';
  input.onchange = () => {
    const [file] = input.files ?? [];
    if (file) {
      onFile(file);
    }
  };
  input.click();
}
