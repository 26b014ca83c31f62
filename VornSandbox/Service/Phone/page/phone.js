"use strict";

// What comes from a Mac or an archive is put into the page as text, never as HTML.
const byId = (id) => document.getElementById(id);

function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name in element) element[name] = value;
    else element.setAttribute(name, value);
  }
  element.append(...children.filter((child) => child !== null));
  return element;
}

// A second press while the first is under way is ignored. Disabling the button instead would lose the focus.
function button(text, label, kind, action) {
  let busy = false;
  return make("button", { type: "button", className: kind, "aria-label": label,
    onclick: async () => {
      if (busy) return;
      busy = true;
      await attempt(action);
      busy = false;
    } }, text);
}

async function attempt(action) {
  const problem = byId("problem");
  try {
    await action();
    problem.hidden = true;
  } catch (error) {
    problem.textContent = error.message;
    problem.hidden = false;
  }
}

async function ask(path, body) {
  const answer = await fetch("/phone/" + path, body === undefined ? {} : {
    method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) });
  const content = await answer.json().catch(() => ({}));
  if (!answer.ok) throw new Error(content.message || "The service answered " + answer.status + ".");
  return content;
}

// Cards

function linkCard(link, view) {
  const device = [link.osVersion, "Vorn " + link.appVersion].filter(Boolean).join(" · ");
  const expires = make("span", { className: "soft", "data-expires": link.expiresAt });
  const head = make("div", { className: "row between" }, make("h3", {}, link.deviceName), expires);
  if (link.status === "pending") {
    return [head, make("p", { className: "soft" }, device + " shows a code."),
      button("Scan code", "Scan code of " + link.deviceName, "", () => ask(`links/${link.id}/scan`, {}))];
  }
  const account = make("select", { "aria-label": "Account for " + link.deviceName },
    ...view.users.map((user) => make("option", { value: user.id }, user.name)));
  return [head, make("p", {}, "Link this Mac to your account?"), make("p", { className: "soft" }, device),
    view.users.length > 1 ? account : null,
    make("div", { className: "row" },
      button("Link this Mac", "Link this Mac: " + link.deviceName, "",
        () => ask(`links/${link.id}/approve`, { userId: account.value })),
      button("Decline", "Decline " + link.deviceName, "quiet", () => ask(`links/${link.id}/reject`, {})))];
}

const statusWords = {
  uploading: ["Uploading", "wait"], analyzing: ["Analyzing", "wait"], review_pending: ["In review", "wait"],
  approved: ["Approved", "good"], rejected: ["Rejected", "bad"], expired: ["Expired", "bad"], aborted: ["Aborted", ""],
};

function bytes(count) {
  if (count < 1000) return count + " bytes";
  const unit = count < 1e6 ? ["kB", 1e3] : ["MB", 1e6];
  return (count / unit[1]).toFixed(1) + " " + unit[0];
}

function partsProgress(submission) {
  const there = submission.receivedParts.length;
  const name = `Upload ${submission.attempt}: parts received`;
  const cells = submission.partCount <= 200
    ? make("div", { className: "parts", "aria-hidden": "true" }) : null;
  if (cells) {
    const received = new Set(submission.receivedParts);
    for (let part = 1; part <= submission.partCount; part++) {
      cells.append(make("i", { className: received.has(part) ? "there" : "" }));
    }
  }
  return [make("progress", { max: submission.partCount, value: there, "aria-label": name }),
    make("p", { className: "soft" }, `${there} of ${submission.partCount} parts`), cells];
}

function reviewButtons(submission, view) {
  const end = (outcome) => () => ask(`submissions/${submission.id}/outcome`, { outcome });
  const named = (words) => `${words} upload ${submission.attempt} of ${submission.userName}`;
  const reason = make("select", { "aria-label": named("Reason to reject") },
    ...view.reasons.map((key) => make("option", { value: key }, key.replaceAll("_", " "))));
  return [make("div", { className: "row" },
    button("Approve", named("Approve"), "good", end("approved")),
    button("Expire", named("Expire"), "quiet", end("expired"))),
  make("div", { className: "row" }, reason,
    button("Reject", named("Reject"), "danger", () => end("rejected:" + reason.value)()))];
}

function submissionCard(submission, view) {
  const [words, kind] = statusWords[submission.status] || [submission.status, ""];
  const which = `Upload ${submission.attempt} of ${submission.userName}`;
  const card = [
    make("div", { className: "row between" },
      make("h3", {}, "Upload " + submission.attempt), make("span", { className: "chip " + kind }, words)),
    make("p", { className: "soft" }, `${submission.userName} · ${bytes(submission.sizeBytes)} · `
      + new Date(submission.createdAt).toLocaleString())];
  if (submission.status === "uploading") card.push(...partsProgress(submission));
  if (submission.status === "approved") {
    card.push(make("p", { className: "reward" }, "+ $" + submission.rewardUsd.toFixed(2)));
  }
  if (submission.reason) card.push(make("p", {}, "Reason: " + submission.reason.replaceAll("_", " ")));
  if (submission.finding) card.push(make("p", { className: "soft" }, submission.finding));
  if (submission.inReview) card.push(...reviewButtons(submission, view));
  if (submission.hasArchive) {
    card.push(button("Show messages", "Show messages of " + which, "quiet", () => openReader(submission.id, which)));
  }
  return card;
}

// Cards that did not change stay as they are, and with them the focus and what is chosen in them.
const shown = new Map();

function showCards(holder, items, view, build) {
  const cards = items.map((item) => {
    const text = JSON.stringify([item, view.users, view.reasons]);
    const old = shown.get(item.id);
    if (old && old.text === text) return old.card;
    const card = make("article", { className: "card" }, ...build(item, view).filter((part) => part !== null));
    if (old) keepFocus(old.card, card);
    shown.set(item.id, { text, card });
    return card;
  });
  for (const card of [...holder.children]) if (!cards.includes(card)) card.remove();
  cards.forEach((card, at) => { if (holder.children[at] !== card) holder.insertBefore(card, holder.children[at] || null); });
}

function keepFocus(old, card) {
  const label = old.contains(document.activeElement) ? document.activeElement.getAttribute("aria-label") : null;
  if (!label) return;
  const same = [...card.querySelectorAll("[aria-label]")].find((item) => item.getAttribute("aria-label") === label);
  queueMicrotask(() => (same || card.querySelector("button"))?.focus());
}

function show(view) {
  showCards(byId("links"), view.links, view, linkCard);
  showCards(byId("submissions"), view.submissions, view, submissionCard);
  byId("macs").replaceChildren(...view.macs.map((mac) => make("li", {}, make("span", {}, mac.deviceName),
    make("span", { className: "soft" }, mac.userName))));
  for (const name of ["links", "submissions", "macs"]) byId("no-" + name).hidden = view[name].length > 0;
  countDown();
}

function countDown() {
  for (const place of document.querySelectorAll("[data-expires]")) {
    const seconds = Math.max(0, Math.ceil((Number(place.dataset.expires) - Date.now()) / 1000));
    place.textContent = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, "0")} left`;
  }
}

// Messages

const reader = { submission: "", page: 0 };

async function openReader(submission, which) {
  reader.submission = submission;
  byId("reader-title").textContent = which;
  await showPage(0);
  byId("reader").showModal();
}

async function showPage(page) {
  const content = await ask(`submissions/${reader.submission}/messages?page=${page}`);
  const pages = Math.max(1, Math.ceil(content.count / content.perPage));
  reader.page = page;
  byId("reader-summary").textContent =
    `${content.count} messages · exported ${content.manifest?.exportedAt ?? "at an unknown time"}`;
  byId("messages").replaceChildren(...content.messages.map(messageItem));
  byId("messages").scrollTop = 0;
  byId("page").textContent = `Page ${page + 1} of ${pages}`;
  byId("previous").disabled = page === 0;
  byId("next").disabled = page + 1 >= pages;
}

function messageItem(message) {
  const about = [new Date(message.sentAt * 1000).toLocaleString()];
  if (message.edited) about.push("edited");
  for (const attachment of message.attachments ?? []) about.push(attachment.mimeType);
  for (const link of message.links ?? []) about.push(link.url);
  return make("li", { className: message.fromMe ? "mine" : "theirs" },
    message.text ? make("p", { className: "bubble" }, message.text) : null,
    make("span", { className: "soft" }, (message.fromMe ? "You" : "Nimbrel") + " · " + about.join(" · ")));
}

// Live

function watch() {
  const events = new EventSource("/phone/events");
  events.onopen = () => { byId("connection").textContent = "Connected to the sandbox"; };
  events.onmessage = (event) => show(JSON.parse(event.data));
  events.onerror = () => {
    byId("connection").textContent = "The sandbox does not answer";
    if (events.readyState === EventSource.CLOSED) setTimeout(watch, 2000);
  };
}

byId("reader-close").onclick = () => byId("reader").close();
byId("previous").onclick = () => attempt(() => showPage(reader.page - 1));
byId("next").onclick = () => attempt(() => showPage(reader.page + 1));
byId("code-form").onsubmit = (event) => {
  event.preventDefault();
  attempt(async () => {
    await ask("links/scan", { qrPayload: byId("code").value.trim() });
    byId("code").value = "";
  });
};
setInterval(countDown, 1000);
watch();
