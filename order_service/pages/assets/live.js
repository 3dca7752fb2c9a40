// Fetches the page that is shown again and again, and replaces what has changed. What has the focus
// there gets it again.
'use strict';
const parts = document.querySelectorAll('[data-live]');
const replace = (part, news) => {
  const link = part.contains(document.activeElement) && document.activeElement.getAttribute('href');
  part.replaceChildren(...news.childNodes);
  if (link) part.querySelector(`[href="${CSS.escape(link)}"]`)?.focus();
};
const update = async () => {
  const answer = await fetch(location.href, {cache: 'no-store'});
  if (answer.status === 401) location.reload();
  if (!answer.ok) throw new Error(answer.statusText);
  const page = new DOMParser().parseFromString(await answer.text(), 'text/html');
  for (const part of parts) {
    const news = page.getElementById(part.id);
    if (news.innerHTML !== part.innerHTML) replace(part, news);
  }
};
const keepUpdating = async () => {
  try {
    if (!document.hidden) await update();
    document.body.classList.remove('stale');
  } catch {
    document.body.classList.add('stale');
  }
  setTimeout(keepUpdating, 3000);
};
setTimeout(keepUpdating, 3000);
