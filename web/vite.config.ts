// SPDX-License-Identifier: MIT
import { fileURLToPath } from 'node:url';
import { viteSingleFile } from 'vite-plugin-singlefile';
import { defineConfig } from 'vitest/config';
import { policyPlugin, singleFileName } from './policy_plugin';
import { wordsPlugin } from './words_plugin';

/** "vite build --mode single" makes the page in one file, which opens without a server. */
export default defineConfig(({ mode }) => {
  const isSingle = mode === 'single';
  const inlineWorker = fileURLToPath(new URL('src/compiler/start_worker_inline', import.meta.url));
  return {
    base: './',
    plugins: [
      wordsPlugin(),
      ...(isSingle ? [viteSingleFile({ outputFileName: singleFileName }), policyPlugin()] : []),
    ],
    resolve: isSingle ? { alias: [{ find: './start_worker', replacement: inlineWorker }] } : {},
    worker: {
      format: isSingle ? ('iife' as const) : ('es' as const),
      plugins: () => [wordsPlugin()],
    },
    build: {
      target: 'es2022',
      chunkSizeWarningLimit: 2000,
      assetsInlineLimit: isSingle ? Number.MAX_SAFE_INTEGER : 0,
      outDir: 'dist',
      // Beside the files of the other page.
      emptyOutDir: !isSingle,
    },
    server: { fs: { allow: ['..'] } },
    optimizeDeps: { exclude: ['morl'] },
    test: { include: ['test/**/*.test.ts'] },
  };
});
