// SPDX-License-Identifier: MIT
import { usePage } from '../model/use_store';
import { useSession } from './use_session';

/** What stays on the page until it is no longer so. */
export function Banners() {
  const session = useSession();
  const isFollowing = usePage((state) => state.isFollowing);
  const unkept = usePage((state) => state.unkept);
  return (
    <>
      {isFollowing && (
        <div className="banner" role="status">
          Another tab edits this project, and this one shows what it does.
          <button onClick={() => void session.takeOver()}>Edit here</button>
        </div>
      )}
      {unkept !== '' && (
        <div className="banner error" role="alert">
          This browser does not keep your edits ({unkept}). Save them, or copy a link, before you
          leave.
        </div>
      )}
    </>
  );
}
