// SPDX-License-Identifier: MIT
// Folders with node files: as texts by path, and in browsers.
import { addShader, type NodeFile, type Project } from '../model/project';
import { readManifest, writeManifest } from './manifest';
import { FileError, nodeFilePaths, readNodes, writeNodes } from './node_file';

const manifestPath = 'shaders.json';

/** A project from the texts of its files, by path. Files that are missing hold no nodes. */
export function openProject(
  texts: Readonly<Record<string, string>>,
  origin: string | null = null,
): Project {
  const files: NodeFile[] = nodeFilePaths.map((path) => ({ path, text: texts[path] ?? '[]\n' }));
  if (!nodeFilePaths.some((path) => path in texts)) {
    throw new FileError(`there is none of the files ${nodeFilePaths.join(', ')}`);
  }
  const manifest = texts[manifestPath];
  const project: Project = {
    origin,
    manifest: manifest === undefined ? null : { path: manifestPath, text: manifest },
    files,
    nodes: files.flatMap(readNodes),
    shaders: manifest === undefined ? [] : readManifest(manifestPath, manifest),
    values: {},
  };
  return project.shaders.length > 0 ? project : addShader(project, 'shader').project;
}

/** The texts of all files as they are now, by path. */
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
  const { manifest } = project;
  return manifest ? { ...texts, [manifest.path]: writeManifest(manifest, project.shaders) } : texts;
}

/** The files of a project as they were opened, by path. */
export function openedTexts(project: Project): Record<string, string> {
  const files = project.manifest ? [...project.files, project.manifest] : project.files;
  return Object.fromEntries(files.map(({ path, text }) => [path, text]));
}

/** Those texts that differ from what was opened. */
export function editedTexts(
  project: Project,
  texts: Readonly<Record<string, string>>,
): Record<string, string> {
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

/**
 * A step of the history after another one of the same folder was saved.
 * @param saved the project that the texts were made from
 */
export function afterSave(
  step: Project,
  saved: Project,
  texts: Readonly<Record<string, string>>,
): Project {
  if (step.origin !== saved.origin) {
    return step;
  }
  const nodes = indexesAfterSave(
    saved.nodes.map(({ id, file, index }) => ({ key: id, list: file, index })),
  );
  const shaders = indexesAfterSave(
    saved.shaders.map(({ name, index }) => ({ key: name, list: '', index })),
  );
  const withText = (file: NodeFile): NodeFile => ({ ...file, text: texts[file.path] ?? file.text });
  const isWritten = saved.manifest !== null;
  return {
    ...step,
    files: step.files.map(withText),
    manifest: step.manifest && withText(step.manifest),
    nodes: step.nodes.map((node) => ({ ...node, index: nodes.get(node.id) ?? null })),
    shaders: step.shaders.map((shader) => ({
      ...shader,
      index: isWritten ? (shaders.get(shader.name) ?? null) : shader.index,
    })),
  };
}

/** What a path is called below the opened folder: with or without the folder "morl". */
function knownPath(path: string): string | undefined {
  const name = path.split('/').at(-1) ?? '';
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

async function textOf(
  folder: FileSystemDirectoryHandle,
  name: string,
): Promise<string | undefined> {
  try {
    return await decode(await (await folder.getFileHandle(name)).getFile());
  } catch (error) {
    if (error instanceof DOMException && error.name === 'NotFoundError') {
      return undefined;
    }
    throw error;
  }
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
  const manifest = await textOf(root, manifestPath);
  if (manifest !== undefined) {
    texts[manifestPath] = manifest;
  }
  return texts;
}

/**
 * Writes files back; the browser replaces each only when it is complete.
 * @param opened what the files held when they were opened
 * @throws FileError if one of them holds something else by now; then none is written
 */
export async function writeFolder(
  root: FileSystemDirectoryHandle,
  texts: Readonly<Record<string, string>>,
  opened: Readonly<Record<string, string>>,
): Promise<void> {
  const now = await readFolder(root);
  for (const path of Object.keys(texts)) {
    if (now[path] !== undefined && now[path] !== opened[path]) {
      throw new FileError(`${path} was changed by another program; open the folder again`);
    }
  }
  const folder = await folderOf(root);
  for (const [path, text] of Object.entries(texts)) {
    const [name = path, parent] = path.split('/').reverse();
    const file = await (parent ? folder : root).getFileHandle(name, { create: true });
    const stream = await file.createWritable();
    await stream.write(text);
    await stream.close();
  }
}
