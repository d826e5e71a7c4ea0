// SPDX-License-Identifier: MIT
// A picture on each node: what it leaves in the variable that it assigns last.
import { storedText, storeText } from '../files/storage';
import type { Store } from '../model/store';
import type { Passes } from './passes';
import type { PreviewRenderer, SmallPicture } from './renderer';
import { shownValue } from './values';

/** The height and width of a picture, in pixels. */
const size = 64;
/** So long nothing changes before pictures are drawn, in milliseconds. */
const idle = 250;
/** What a picture may take, in milliseconds: more would be felt. After some that took longer there are none. */
const budget = 100;
const maxSlow = 3;
const offKey = 'morl.pictures.off';

/** Whether a person wants pictures on nodes. */
export function wantsPictures(): boolean {
  return storedText(offKey) !== 'yes';
}

export function setWantsPictures(store: Store, isWanted: boolean): void {
  storeText(offKey, isWanted ? 'no' : 'yes');
  store.setState({ showsPictures: isWanted, pictures: new Map() });
}

function toUrl({ data }: SmallPicture): string {
  const canvas = document.createElement('canvas');
  canvas.width = size;
  canvas.height = size;
  const rows = new ImageData(size, size);
  for (let row = 0; row < size; ++row) {
    const from = (size - 1 - row) * size * 4;
    rows.data.set(data.subarray(from, from + size * 4), row * size * 4);
  }
  canvas.getContext('2d')?.putImageData(rows, 0, 0);
  return canvas.toDataURL();
}

export class NodePictures {
  private timer: ReturnType<typeof setTimeout> | undefined;
  /** Counts what was wanted; only the last counts. */
  private turn = 0;
  private slow = 0;

  constructor(
    private readonly store: Store,
    private readonly renderer: PreviewRenderer,
  ) {}

  /** Draws all pictures anew, once nothing changes any more. */
  want(passes: Passes): void {
    this.stop();
    if (this.store.getState().showsPictures) {
      this.timer = setTimeout(() => void this.draw(passes), idle);
    }
  }

  /** Draws nothing until pictures are wanted again. */
  stop(): void {
    this.turn += 1;
    clearTimeout(this.timer);
  }

  private async draw(passes: Passes): Promise<void> {
    const { turn } = this;
    const pictures = new Map<string, string>();
    for (const node of [...passes.vertex.nodes, ...passes.fragment.nodes]) {
      const value = shownValue(passes, node);
      // When the graphics are taken away, there is none.
      const picture =
        value && (await this.renderer.pictureOf(value.passes, size).catch(() => null));
      if (turn !== this.turn) {
        return;
      }
      if (picture) {
        pictures.set(node, toUrl(picture));
        this.count(picture.time);
      }
    }
    if (this.store.getState().showsPictures) {
      this.store.setState({ pictures });
    }
  }

  /** Goes without pictures where they take too long. */
  private count(time: number): void {
    this.slow = time > budget ? this.slow + 1 : 0;
    if (this.slow >= maxSlow) {
      this.slow = 0;
      const text =
        'the pictures on the nodes take too long here, so they are off; Ctrl+K brings them back';
      this.store.setState({
        showsPictures: false,
        pictures: new Map(),
        notice: { kind: 'info', text },
      });
    }
  }
}
