// SPDX-License-Identifier: MIT
// Folders with node files: as texts by path, and in browsers.
import { messageOf } from '../message_of';
import {
  addShader,
  type GraphNode,
  isSourcePath,
  type NodeFile,
  type Project,
  type Shader,
} from '../model/project';
import { emptyManifest, readManifest, writeManifest } from './manifest';
import { FileError, nodeFilePaths, readNodes, writeNodes } from './node_file';
import { type FileTexts, sourceFolders } from './node_source';

const manifestPath = 'shaders.json';

/** Refuses a node that stands in two places of which one is a source: which one counts? */
function checkOnce(nodes: readonly GraphNode[]): void {
  const seen = new Map<string, GraphNode>();
  for (const node of nodes) {
    const other = seen.get(node.name);
    if (other && isSourcePath(node.file)) {
      throw new FileError(
        `the node '${node.name}' stands in ${other.file} and in ${node.file}; take it out of one of them`,
      );
    }
    seen.set(node.name, node);
  }
}

/**
 * A project from the texts of its files, by path. Files that are missing hold no nodes.
 * @param sources those of the texts that are node sources
 */
export function openProject(
  texts: Readonly<Record<string, string>>,
  sources: readonly NodeFile[] = [],
): Project {
  if (sources.length === 0 && !nodeFilePaths.some((path) => path in texts)) {
    throw new FileError(
      `there is none of the files ${nodeFilePaths.join(', ')}, and no node source`,
    );
  }
  const plain = nodeFilePaths.map((path) => ({ path, text: texts[path] ?? '[]\n' }));
  const files: NodeFile[] = [...plain, ...sources];
  const nodes = files.flatMap(readNodes);
  checkOnce(nodes);
  const manifest = texts[manifestPath];
  const project: Project = {
    manifest: manifest === undefined ? null : { path: manifestPath, text: manifest },
    files,
    nodes,
    shaders: manifest === undefined ? [] : readManifest(manifestPath, manifest),
    values: {},
  };
  return project.shaders.length > 0 ? project : addShader(project, 'shader').project;
}

/** The texts of all files as they are now, by path. A node source is a node file with one node here. */
export function saveProject(project: Project): Record<string, string> {
  const texts = Object.fromEntries(
    project.files.map((file) => [
      file.path,
      writeNodes(
        file,
        project.nodes.filter((node) => node.file === file.path),
      ),
    ]),
  );
  const manifest = project.manifest ?? newManifest(project);
  return manifest ? { ...texts, [manifest.path]: writeManifest(manifest, project.shaders) } : texts;
}

/** The manifest of a project that has none, if there is something to say in it. */
function newManifest({ shaders }: Project): NodeFile | null {
  const isSomething =
    shaders.length > 1 ||
    shaders.some(
      ({ vertex, fragment, macros }) =>
        vertex.length + fragment.length + Object.keys(macros).length > 0,
    );
  return isSomething ? { path: manifestPath, text: emptyManifest } : null;
}

/** The files of a project as they were opened, by path. */
export function openedTexts(project: Project): FileTexts {
  const files = project.manifest ? [...project.files, project.manifest] : project.files;
  return Object.fromEntries(
    files.map(({ path, text, source }) => [path, source === undefined ? text : source]),
  );
}

/** Those texts that differ from what was opened. */
export function editedTexts(project: Project, texts: FileTexts): FileTexts {
  const opened = openedTexts(project);
  return Object.fromEntries(Object.entries(texts).filter(([path, text]) => opened[path] !== text));
}

/** The places of elements in a list after saving: those that were there in their order, then new ones. */
function indexesAfterSave<Key>(
  elements: readonly { key: Key; list: string; index: number | null }[],
): Map<Key, number> {
  const rank = (index: number | null): number => index ?? Number.MAX_SAFE_INTEGER;
  const next = new Map<string, number>();
  return new Map(
    [...elements]
      .sort((a, b) => rank(a.index) - rank(b.index))
      .map(({ key, list }) => {
        const index = next.get(list) ?? 0;
        next.set(list, index + 1);
        return [key, index];
      }),
  );
}

/** What stays the same when a shader of the manifest is renamed. */
function shaderKey({ name, index }: Shader): string {
  return index === null ? name : `#${index}`;
}

/**
 * A step of the history after another one was saved.
 * @param saved the project that the texts were made from
 * @param texts its files that hold by now what they shall hold
 * @param written what was written for them
 */
export function afterSave(
  step: Project,
  saved: Project,
  texts: Readonly<Record<string, string>>,
  written: FileTexts = texts,
): Project {
  const nodes = indexesAfterSave(
    saved.nodes.map(({ id, file, index }) => ({ key: id, list: file, index })),
  );
  const shaders = indexesAfterSave(
    saved.shaders.map((shader) => ({ key: shaderKey(shader), list: '', index: shader.index })),
  );
  // A source that is gone comes back with all that it had.
  const isGone = (path: string): boolean => written[path] === null;
  const withText = (file: NodeFile): NodeFile => ({
    ...file,
    text: isGone(file.path) ? file.text : (texts[file.path] ?? file.text),
    ...(file.source !== undefined &&
      file.path in written && { source: written[file.path] ?? null }),
  });
  const manifestText = written[manifestPath];
  const isWritten = typeof manifestText === 'string';
  return {
    ...step,
    files: step.files.map(withText),
    manifest: isWritten ? { path: manifestPath, text: manifestText } : step.manifest,
    nodes: step.nodes.map((node) => ({
      ...node,
      index:
        isGone(node.file) || !(node.file in written) ? node.index : (nodes.get(node.id) ?? null),
    })),
    shaders: step.shaders.map((shader) => ({
      ...shader,
      index: isWritten ? (shaders.get(shaderKey(shader)) ?? null) : shader.index,
    })),
  };
}

/** What a path is called below the opened folder: with or without the folder "morl". */
function knownPath(path: string): string | undefined {
  const [name = '', folder = ''] = path.split('/').reverse();
  if (isSourcePath(name)) {
    if (!sourceFolders.includes(`morl/${folder}`)) {
      throw new FileError(
        `${path}: a node source belongs to one of the folders ${sourceFolders.join(', ')}, and is opened with it`,
      );
    }
    return `morl/${folder}/${name}`;
  }
  return [...nodeFilePaths, manifestPath].find((known) => known.split('/').at(-1) === name);
}

/** The text of a file, with every byte of it. @throws FileError if it is not UTF-8 */
async function decode(file: File): Promise<string> {
  try {
    const decoder = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true });
    return decoder.decode(await file.arrayBuffer());
  } catch (error) {
    if (error instanceof TypeError) {
      throw new FileError(`${file.name}: not UTF-8; save it as UTF-8 and open it again`);
    }
    throw error;
  }
}

/** The texts of the known files among those that a person has chosen. */
export async function readChosen(chosen: readonly File[]): Promise<Record<string, string>> {
  const texts: Record<string, string> = {};
  for (const file of chosen) {
    const path = knownPath(file.webkitRelativePath || file.name);
    if (path) {
      texts[path] = await decode(file);
    }
  }
  return texts;
}

/** Whether this browser can open folders and write them back. */
export function canOpenFolders(): boolean {
  return 'showDirectoryPicker' in window;
}

async function folderOf(root: FileSystemDirectoryHandle): Promise<FileSystemDirectoryHandle> {
  return root.name === 'morl' ? root : root.getDirectoryHandle('morl');
}

/** What is there, or undefined. */
async function ifFound<Value>(look: Promise<Value>): Promise<Value | undefined> {
  try {
    return await look;
  } catch (error) {
    if (error instanceof DOMException && error.name === 'NotFoundError') {
      return undefined;
    }
    throw error;
  }
}

async function textOf(
  folder: FileSystemDirectoryHandle,
  name: string,
): Promise<string | undefined> {
  const handle = await ifFound(folder.getFileHandle(name));
  return handle && decode(await handle.getFile());
}

async function readSourceFolder(
  parent: FileSystemDirectoryHandle,
  path: string,
): Promise<Record<string, string>> {
  const folder = await ifFound(parent.getDirectoryHandle(path.split('/')[1] ?? path));
  const texts: Record<string, string> = {};
  for await (const [name, entry] of folder?.entries() ?? []) {
    if (isSourcePath(name) && entry.kind === 'file') {
      texts[`${path}/${name}`] = await decode(await (entry as FileSystemFileHandle).getFile());
    }
  }
  return texts;
}

/** The texts of the known files of a folder. */
export async function readFolder(root: FileSystemDirectoryHandle): Promise<Record<string, string>> {
  const folder = await folderOf(root);
  const texts: Record<string, string> = {};
  for (const path of nodeFilePaths) {
    const text = await textOf(folder, path.split('/')[1] ?? path);
    if (text !== undefined) {
      texts[path] = text;
    }
  }
  for (const path of sourceFolders) {
    Object.assign(texts, await readSourceFolder(folder, path));
  }
  const manifest = await textOf(root, manifestPath);
  if (manifest !== undefined) {
    texts[manifestPath] = manifest;
  }
  return texts;
}

/**
 * Writes files of a folder, each by itself: what fails keeps no other from being written. A file that another program
 * has changed stays.
 * @param texts by path; null: the file is removed, if all others could be written
 * @param opened what was read of them
 * @returns why files could not be written, by path
 */
export async function writeFolder(
  root: FileSystemDirectoryHandle,
  texts: FileTexts,
  opened: FileTexts,
): Promise<Map<string, string>> {
  const now = await readFolder(root);
  const folder = await folderOf(root);
  const failures = new Map<string, string>();
  // What has moved from one file to another one is written before it is removed.
  for (const isRemoval of [false, true]) {
    for (const [path, text] of Object.entries(texts)) {
      if ((text === null) !== isRemoval) {
        continue;
      }
      const parent = path.startsWith('morl/') ? folder : root;
      try {
        if (now[path] !== undefined && now[path] !== opened[path]) {
          throw new FileError('it was changed by another program, and stays');
        }
        if (isRemoval && failures.size > 0) {
          throw new FileError('it stays until the others are saved');
        }
        await writeFile(parent, path.replace(/^morl\//, ''), text);
      } catch (error) {
        failures.set(path, messageOf(error));
      }
    }
  }
  return failures;
}

/** @param text null: the file is removed */
async function writeFile(
  root: FileSystemDirectoryHandle,
  path: string,
  text: string | null,
): Promise<void> {
  const [name = path, parent] = path.split('/').reverse();
  const folder = parent ? await root.getDirectoryHandle(parent, { create: true }) : root;
  if (text === null) {
    await ifFound(folder.removeEntry(name));
    return;
  }
  const file = await folder.getFileHandle(name, { create: true });
  const stream = await file.createWritable();
  await stream.write(text);
  await stream.close();
}
