<?xml version="1.0" encoding="UTF-8"?>
<!-- SPDX-License-Identifier: Apache-2.0 -->
<!--
  tarnwick-html.xsl: one self-contained HTML page of a document that tarnwick wrote, to read
  a device as a host shows it. Run with xsltproc (libxslt), XSLT 1.0; the string parameter
  lang chooses the language of the texts (docs/view.md has the command).

  The page shows the identification, the problems the document itself shows (references to
  items it does not define, dictionary keys without text, LIKE bases it could not resolve),
  the menu tree from the top menus, and every item by type with an anchor, each reference a
  link. Texts are shown in the language `lang` names ("|en|Menu|de|Menü"), in the first one
  when it is empty or a text lacks it. Images come from the document's own base64 as data:
  URIs; the page loads nothing and runs no script.

  Every lookup goes through a key, so the page takes time in proportion to the document.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

<xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>

<xsl:param name="lang" select="''"/>

<xsl:key name="item" match="/EDDL/description/*[@id]" use="@id"/>
<xsl:key name="dictionary" match="/EDDL/USED_DICT_KEYS/DICTIONARY_KEY" use="@id"/>
<xsl:key name="image" match="/EDDL/image_files/file" use="@path"/>
<!-- The references of menu entries, by the name they give; the first of them shows the
     menu it names in the tree. -->
<xsl:key name="menu-entry" match="MENU/ITEMS//item_reference/reference" use="@ref"/>
<xsl:variable name="items" select="/EDDL/description/*[@id]"/>
<xsl:variable name="letters" select="'abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ'"/>
<!-- The item types in the order of their sections; LIKE names an item whose base was not
     found and that named no type of its own. -->
<xsl:variable name="type-order"
  select="'MENU VARIABLE COMMAND METHOD EDIT_DISPLAY IMAGE COLLECTION RECORD ARRAY ITEM_ARRAY LIST VARIABLE_LIST FILE CHART GRAPH GRID SOURCE WAVEFORM AXIS RESPONSE_CODES REFRESH UNIT WRITE_AS_ONE BLOCK CONNECTION LIKE '"/>

<!-- What the document shows to be wrong. References of items that name no item: not the
     names of members, not calls (a name with arguments but no '['). Whole-document paths
     from the root cost libxslt linear time; a path from $items, or a key whose one value
     holds many nodes, costs quadratic time. -->
<xsl:variable name="dangling"
  select="/descendant::reference[not(../../self::description)][not(parent::member_identifier)]
          [not(*) or contains(@ref, '[')]
          [not(key('item', substring-before(concat(translate(@ref, '[.-', '   '), ' '), ' ')))]"/>
<xsl:variable name="missing-texts" select="/descendant::string[@dictref][not(key('dictionary', @dictref)/DICTIONARY_STRING)]"/>
<xsl:variable name="problem-count" select="count($dangling) + count($missing-texts) + count($unresolved)"/>
<xsl:variable name="unresolved" select="$items[@parent]"/>

<!-- ==== The page ========================================================================= -->

<xsl:template match="/">
  <html>
    <xsl:if test="$lang != ''"><xsl:attribute name="lang"><xsl:value-of select="$lang"/></xsl:attribute></xsl:if>
    <head>
      <title><xsl:call-template name="plain-title"/></title>
      <style><xsl:call-template name="style"/></style>
    </head>
    <body>
      <h1><xsl:call-template name="title"/></h1>
      <xsl:call-template name="identification"/>
      <xsl:call-template name="contents"/>
      <xsl:call-template name="problems"/>
      <xsl:call-template name="menu-tree"/>
      <xsl:call-template name="items-by-type"/>
    </body>
  </html>
</xsl:template>

<xsl:template name="title">
  <xsl:variable name="root" select="key('item', 'root_menu')[self::MENU]/LABEL"/>
  <xsl:choose>
    <xsl:when test="$root"><xsl:apply-templates select="$root/*" mode="t"/></xsl:when>
    <xsl:otherwise>Device description</xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- For the window, text alone: the device's numbers. -->
<xsl:template name="plain-title">
  <xsl:variable name="id" select="/EDDL/description"/>
  <xsl:value-of select="concat('Device ', normalize-space($id/MANUFACTURER), $id/MANUFACTURER/*/@ref, ' / ',
                               normalize-space($id/DEVICE_TYPE), $id/DEVICE_TYPE/*/@ref,
                               ' revision ', normalize-space($id/DEVICE_REVISION))"/>
</xsl:template>

<xsl:template name="identification">
  <table class="identification">
    <xsl:for-each select="/EDDL/description/*[not(@id)]">
      <tr><th><xsl:value-of select="name()"/></th><td><xsl:apply-templates select="*" mode="t"/></td></tr>
    </xsl:for-each>
    <tr><th>items</th><td><xsl:value-of select="count($items)"/></td></tr>
  </table>
</xsl:template>

<xsl:template name="contents">
  <p class="contents">
    <xsl:if test="$problem-count &gt; 0"><a href="#problems">Problems</a> · </xsl:if>
    <a href="#menus">Menus</a>
    <xsl:call-template name="each-type"><xsl:with-param name="for" select="'contents'"/></xsl:call-template>
  </p>
</xsl:template>

<!-- For each item type of $type-order that the document has: its entry in the contents,
     or its section. (A key by type, or grouping by it, costs libxslt quadratic time.) -->
<xsl:template name="each-type">
  <xsl:param name="for"/>
  <xsl:param name="types" select="$type-order"/>
  <xsl:variable name="type" select="substring-before($types, ' ')"/>
  <xsl:variable name="of-type" select="$items[name() = $type]"/>
  <xsl:if test="$of-type and $for = 'contents'">
    <xsl:text> · </xsl:text>
    <a href="#type-{$type}"><xsl:value-of select="$type"/></a>
    <xsl:value-of select="concat(' (', count($of-type), ')')"/>
  </xsl:if>
  <xsl:if test="$of-type and $for = 'sections'">
    <div class="section" id="type-{$type}">
      <h2><xsl:value-of select="$type"/></h2>
      <xsl:apply-templates select="$of-type" mode="item"/>
    </div>
  </xsl:if>
  <xsl:if test="contains($types, ' ')">
    <xsl:call-template name="each-type">
      <xsl:with-param name="for" select="$for"/>
      <xsl:with-param name="types" select="substring-after($types, ' ')"/>
    </xsl:call-template>
  </xsl:if>
</xsl:template>

<!-- ==== Problems ========================================================================== -->

<xsl:template name="problems">
  <xsl:if test="$problem-count &gt; 0">
    <div class="section" id="problems">
      <h2>Problems (<xsl:value-of select="$problem-count"/>)</h2>
      <ul class="problems">
        <xsl:for-each select="$dangling">
          <li><a href="#{generate-id()}"><xsl:value-of select="@ref"/></a> is not defined
            <xsl:call-template name="where"/></li>
        </xsl:for-each>
        <xsl:for-each select="$missing-texts">
          <li><a href="#{generate-id()}">[<xsl:value-of select="@dictref"/>]</a> has no text in the dictionaries
            <xsl:call-template name="where"/></li>
        </xsl:for-each>
        <xsl:for-each select="$unresolved">
          <li><a href="#item-{@id}"><xsl:value-of select="@id"/></a> is LIKE
            <xsl:value-of select="@parent"/>, which is not defined or on a cycle of LIKE bases</li>
        </xsl:for-each>
      </ul>
    </div>
  </xsl:if>
</xsl:template>

<!-- "(in ATTRIBUTE of ITEM)" for a node inside an item. -->
<xsl:template name="where">
  <xsl:variable name="item" select="ancestor::*[parent::description][1]"/>
  <span class="where">(in <xsl:value-of select="name(ancestor::*[parent::*/parent::description][1])"/> of
    <a href="#item-{$item/@id}"><xsl:value-of select="$item/@id"/></a>)</span>
</xsl:template>

<!-- ==== The menu tree ====================================================================== -->

<xsl:template name="menu-tree">
  <div class="section" id="menus">
    <h2>Menus</h2>
    <xsl:variable name="tree">
      <xsl:call-template name="top-menus"><xsl:with-param name="root" select="true()"/></xsl:call-template>
      <xsl:call-template name="top-menus"><xsl:with-param name="root" select="false()"/></xsl:call-template>
    </xsl:variable>
    <xsl:copy-of select="$tree"/>
    <xsl:if test="string($tree) = ''"><p>The document has no top menu.</p></xsl:if>
  </div>
</xsl:template>

<!-- The menus that no other menu names: root_menu, or the others. -->
<xsl:template name="top-menus">
  <xsl:param name="root"/>
  <xsl:for-each select="$items[self::MENU][(@id = 'root_menu') = $root]">
    <xsl:if test="not(key('menu-entry', @id)[ancestor::MENU[1]/@id != current()/@id])">
      <xsl:call-template name="menu"/>
    </xsl:if>
  </xsl:for-each>
</xsl:template>

<!-- A menu with its entries. `path` holds the menus above, so that a cycle ends. -->
<xsl:template name="menu">
  <xsl:param name="path" select="' '"/>
  <div class="menu">
    <div class="menu-head">
      <xsl:call-template name="label-of"/>
      <xsl:text> </xsl:text>
      <a class="id" href="#item-{@id}"><xsl:value-of select="@id"/></a>
      <xsl:for-each select="STYLE/*"><span class="kw"><xsl:value-of select="name()"/></span></xsl:for-each>
    </div>
    <ul>
      <xsl:apply-templates select="ITEMS/*" mode="tree">
        <xsl:with-param name="path" select="concat($path, @id, ' ')"/>
      </xsl:apply-templates>
    </ul>
  </div>
</xsl:template>

<xsl:template match="item" mode="tree">
  <xsl:param name="path"/>
  <xsl:variable name="entry" select="item_reference/*"/>
  <xsl:choose>
    <xsl:when test="$entry/self::reference">
      <xsl:apply-templates select="$entry" mode="tree">
        <xsl:with-param name="path" select="$path"/>
      </xsl:apply-templates>
    </xsl:when>
    <xsl:when test="$entry/self::SEPARATOR"><li class="separator"><hr/></li></xsl:when>
    <xsl:when test="$entry/self::COLUMNBREAK | $entry/self::ROWBREAK">
      <li class="break"><xsl:value-of select="name($entry)"/></li>
    </xsl:when>
    <xsl:otherwise><li class="text"><xsl:apply-templates select="$entry" mode="t"/></li></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template match="reference" mode="tree">
  <xsl:param name="path"/>
  <xsl:variable name="name" select="substring-before(concat(translate(@ref, '[.-', '   '), ' '), ' ')"/>
  <xsl:variable name="target" select="key('item', $name)"/>
  <xsl:variable name="qualifiers" select="../../qualifiers/*"/>
  <xsl:choose>
    <xsl:when test="not($target)">
      <li><span class="problem" title="not defined"><xsl:value-of select="@ref"/></span></li>
    </xsl:when>
    <xsl:when test="$target/self::MENU and @ref = $name and not(contains($path, concat(' ', $name, ' ')))
                    and generate-id(key('menu-entry', $name)[1]) = generate-id()">
      <li>
        <xsl:for-each select="$target">
          <xsl:call-template name="menu"><xsl:with-param name="path" select="$path"/></xsl:call-template>
        </xsl:for-each>
      </li>
    </xsl:when>
    <xsl:otherwise>
      <li>
        <xsl:for-each select="$target"><xsl:call-template name="label-of"/></xsl:for-each>
        <xsl:text> </xsl:text>
        <a class="id" href="#item-{$name}"><xsl:value-of select="@ref"/></a>
        <span class="type"><xsl:value-of select="name($target)"/></span>
        <xsl:for-each select="$qualifiers"><span class="kw"><xsl:value-of select="name()"/></span></xsl:for-each>
        <xsl:if test="$target/self::MENU and @ref = $name"> (shown where first named)</xsl:if>
        <xsl:for-each select="$target/self::IMAGE"><xsl:call-template name="pictures"/></xsl:for-each>
      </li>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<xsl:template match="IF" mode="tree">
  <xsl:param name="path"/>
  <li class="condition">
    <span class="kw">IF</span><xsl:text> </xsl:text><code><xsl:value-of select="@condition"/></code>:
    <ul><xsl:apply-templates select="*[not(self::ELSE)]" mode="tree"><xsl:with-param name="path" select="$path"/></xsl:apply-templates></ul>
    <xsl:if test="ELSE">
      <span class="kw">ELSE</span>:
      <ul><xsl:apply-templates select="ELSE/*" mode="tree"><xsl:with-param name="path" select="$path"/></xsl:apply-templates></ul>
    </xsl:if>
  </li>
</xsl:template>

<xsl:template match="SELECT" mode="tree">
  <xsl:param name="path"/>
  <li class="condition">
    <span class="kw">SELECT</span><xsl:text> </xsl:text><code><xsl:value-of select="@condition"/></code>:
    <xsl:for-each select="CASE | DEFAULT">
      <div class="case">
        <xsl:choose>
          <xsl:when test="self::CASE"><span class="kw">CASE</span><xsl:text> </xsl:text><code><xsl:value-of select="@value"/></code>:</xsl:when>
          <xsl:otherwise><span class="kw">DEFAULT</span>:</xsl:otherwise>
        </xsl:choose>
        <ul><xsl:apply-templates select="*" mode="tree"><xsl:with-param name="path" select="$path"/></xsl:apply-templates></ul>
      </div>
    </xsl:for-each>
  </li>
</xsl:template>

<xsl:template match="*" mode="tree"/>

<!-- An item's label as text, or its name when it has none. -->
<xsl:template name="label-of">
  <span class="label">
    <xsl:choose>
      <xsl:when test="LABEL"><xsl:apply-templates select="LABEL/*" mode="t"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="@id"/></xsl:otherwise>
    </xsl:choose>
  </span>
</xsl:template>

<!-- The pictures of an IMAGE item: every file its PATH can name. -->
<xsl:template name="pictures">
  <xsl:for-each select="PATH//string">
    <xsl:variable name="path" select="string(.)"/>
    <xsl:for-each select="key('image', $path)[1]">
      <xsl:variable name="type">
        <xsl:call-template name="media-type"><xsl:with-param name="name" select="$path"/></xsl:call-template>
      </xsl:variable>
      <img class="picture" alt="{$path}" title="{$path}" src="data:{$type};base64,{normalize-space(.)}"/>
    </xsl:for-each>
  </xsl:for-each>
</xsl:template>

<!-- The media type of a file by its name's extension, in any case. -->
<xsl:template name="media-type">
  <xsl:param name="name"/>
  <xsl:choose>
    <xsl:when test="contains($name, '.')">
      <xsl:call-template name="media-type"><xsl:with-param name="name" select="substring-after($name, '.')"/></xsl:call-template>
    </xsl:when>
    <xsl:otherwise>
      <xsl:variable name="extension" select="translate($name, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
      <xsl:choose>
        <xsl:when test="$extension = 'png'">image/png</xsl:when>
        <xsl:when test="$extension = 'jpg' or $extension = 'jpeg'">image/jpeg</xsl:when>
        <xsl:when test="$extension = 'gif'">image/gif</xsl:when>
        <xsl:when test="$extension = 'bmp'">image/bmp</xsl:when>
        <xsl:when test="$extension = 'svg'">image/svg+xml</xsl:when>
        <xsl:when test="$extension = 'webp'">image/webp</xsl:when>
        <xsl:when test="$extension = 'ico'">image/x-icon</xsl:when>
        <xsl:otherwise>application/octet-stream</xsl:otherwise>
      </xsl:choose>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- ==== Items by type ===================================================================== -->

<xsl:template name="items-by-type">
  <xsl:call-template name="each-type"><xsl:with-param name="for" select="'sections'"/></xsl:call-template>
</xsl:template>

<xsl:template match="*" mode="item">
  <div class="item" id="item-{@id}">
    <h3>
      <span class="type"><xsl:value-of select="name()"/></span>
      <xsl:text> </xsl:text>
      <a class="id" href="#item-{@id}"><xsl:value-of select="@id"/></a>
      <xsl:if test="LABEL"><xsl:text> </xsl:text><span class="label"><xsl:apply-templates select="LABEL/*" mode="v"/></span></xsl:if>
    </h3>
    <xsl:if test="@parent">
      <p>LIKE <span class="problem">
        <xsl:value-of select="@parent"/></span>, which is not defined or on a cycle of LIKE bases</p>
    </xsl:if>
    <xsl:if test="*[not(self::LABEL)]">
      <table class="attributes">
        <xsl:for-each select="*[not(self::LABEL) and not(self::response_code)]">
          <tr><th><xsl:value-of select="name()"/><xsl:if test="@number"><xsl:value-of select="concat(' ', @number)"/></xsl:if></th>
            <td><xsl:apply-templates select="*" mode="v"/></td></tr>
        </xsl:for-each>
        <xsl:if test="response_code">
          <tr><th>codes</th><td><xsl:apply-templates select="response_code" mode="v"/></td></tr>
        </xsl:if>
      </table>
    </xsl:if>
    <xsl:if test="self::IMAGE"><div><xsl:call-template name="pictures"/></div></xsl:if>
  </div>
</xsl:template>

<!-- ==== Values (mode v): in the items, with the anchors of the problems ================= -->

<xsl:template match="string" mode="v">
  <xsl:call-template name="text"><xsl:with-param name="anchor" select="true()"/></xsl:call-template>
</xsl:template>

<xsl:template match="integer | float | data_item_mask | expression" mode="v">
  <code><xsl:value-of select="."/></code>
</xsl:template>

<xsl:template match="code" mode="v">
  <pre class="code"><xsl:value-of select="."/></pre>
</xsl:template>

<xsl:template match="reference" mode="v">
  <xsl:variable name="name" select="substring-before(concat(translate(@ref, '[.-', '   '), ' '), ' ')"/>
  <xsl:choose>
    <xsl:when test="parent::member_identifier"><code><xsl:value-of select="@ref"/></code></xsl:when>
    <xsl:when test="* and not(contains(@ref, '['))">
      <code><xsl:value-of select="@ref"/></code>(<xsl:apply-templates select="*" mode="v"/>)
    </xsl:when>
    <xsl:when test="key('item', $name)">
      <a class="ref" href="#item-{$name}"><xsl:value-of select="@ref"/></a>
      <xsl:apply-templates select="reference" mode="index"/>
    </xsl:when>
    <xsl:otherwise>
      <span class="problem" id="{generate-id()}" title="not defined"><xsl:value-of select="@ref"/></span>
      <xsl:apply-templates select="reference" mode="index"/>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- The references inside an index show only when they name nothing. -->
<xsl:template match="reference" mode="index">
  <xsl:if test="not(key('item', substring-before(concat(translate(@ref, '[.-', '   '), ' '), ' ')))">
    <xsl:text> </xsl:text>
    <span class="problem" id="{generate-id()}" title="not defined">index <xsl:value-of select="@ref"/></span>
  </xsl:if>
  <xsl:apply-templates select="reference" mode="index"/>
</xsl:template>

<xsl:template match="IF" mode="v">
  <div class="condition">
    <span class="kw">IF</span><xsl:text> </xsl:text><code><xsl:value-of select="@condition"/></code>:
    <div class="branch"><xsl:apply-templates select="*[not(self::ELSE)]" mode="v"/></div>
    <xsl:if test="ELSE">
      <span class="kw">ELSE</span>:
      <div class="branch"><xsl:apply-templates select="ELSE/*" mode="v"/></div>
    </xsl:if>
  </div>
</xsl:template>

<xsl:template match="SELECT" mode="v">
  <div class="condition">
    <span class="kw">SELECT</span><xsl:text> </xsl:text><code><xsl:value-of select="@condition"/></code>:
    <xsl:for-each select="CASE | DEFAULT">
      <div class="branch">
        <xsl:choose>
          <xsl:when test="self::CASE"><span class="kw">CASE</span><xsl:text> </xsl:text><code><xsl:value-of select="@value"/></code>: </xsl:when>
          <xsl:otherwise><span class="kw">DEFAULT</span>: </xsl:otherwise>
        </xsl:choose>
        <xsl:apply-templates select="*" mode="v"/>
      </div>
    </xsl:for-each>
  </div>
</xsl:template>

<!-- Structured entries: their parts in a row. -->
<xsl:template match="enumerator | member | element | response_code | item | data_item" mode="v">
  <div class="entry">
    <xsl:for-each select="*">
      <span class="part part-{name()}" title="{name()}"><xsl:apply-templates select="*" mode="v"/></span>
    </xsl:for-each>
  </div>
</xsl:template>

<xsl:template match="vector" mode="v">
  <div class="entry"><xsl:for-each select="*"><span class="part"><xsl:apply-templates select="." mode="v"/></span></xsl:for-each></div>
</xsl:template>

<!-- A transaction: its number, then its request, reply and codes. -->
<xsl:template match="TRANSACTION/REQUEST | TRANSACTION/REPLY | TRANSACTION/RESPONSE_CODES" mode="v">
  <div class="named"><span class="name"><xsl:value-of select="name()"/></span>
    <xsl:if test="not(*)"> (none)</xsl:if>
    <xsl:apply-templates select="*" mode="v"/>
  </div>
</xsl:template>

<!-- Anything else: a keyword (an empty element), a method parameter, or a named part. -->
<xsl:template match="*" mode="v">
  <xsl:choose>
    <xsl:when test="@call_by_reference">
      <code class="parameter"><xsl:value-of select="translate(name(), '_', ' ')"/>
        <xsl:if test="@call_by_reference = 'true'"> &amp;</xsl:if>
        <xsl:value-of select="concat(' ', .)"/></code>
    </xsl:when>
    <xsl:when test="not(*)">
      <span class="kw"><xsl:value-of select="name()"/><xsl:if test="@size">(<xsl:value-of select="@size"/>)</xsl:if></span>
    </xsl:when>
    <xsl:otherwise>
      <div class="named"><span class="name"><xsl:value-of select="name()"/></span><xsl:text> </xsl:text>
        <xsl:apply-templates select="*" mode="v"/></div>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- ==== Texts (mode t): values as plain text, for labels in the tree and the title ======= -->

<xsl:template match="string" mode="t">
  <xsl:call-template name="text"><xsl:with-param name="anchor" select="false()"/></xsl:call-template>
</xsl:template>

<xsl:template match="IF" mode="t">
  <xsl:apply-templates select="*[not(self::ELSE)]" mode="t"/>
  <xsl:if test="ELSE"> / <xsl:apply-templates select="ELSE/*" mode="t"/></xsl:if>
</xsl:template>

<xsl:template match="SELECT" mode="t">
  <xsl:for-each select="*">
    <xsl:if test="position() != 1"> / </xsl:if>
    <xsl:apply-templates select="*" mode="t"/>
  </xsl:for-each>
</xsl:template>

<xsl:template match="reference" mode="t"><xsl:value-of select="@ref"/></xsl:template>

<xsl:template match="*" mode="t">
  <xsl:choose>
    <xsl:when test="*"><xsl:apply-templates select="*" mode="t"/></xsl:when>
    <xsl:when test="normalize-space(.) = ''"><xsl:value-of select="name()"/></xsl:when>
    <xsl:otherwise><xsl:value-of select="."/></xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- ==== Languages ========================================================================= -->

<!-- A string element's text in the chosen language: its own, or its dictionary key's; a key
     without text shows itself, marked (with an anchor when `anchor`). -->
<xsl:template name="text">
  <xsl:param name="anchor"/>
  <xsl:choose>
    <xsl:when test="not(@dictref)">
      <xsl:call-template name="in-language"><xsl:with-param name="text" select="string(.)"/></xsl:call-template>
    </xsl:when>
    <xsl:when test="key('dictionary', @dictref)/DICTIONARY_STRING">
      <span class="key" title="[{@dictref}]">
        <xsl:call-template name="in-language">
          <xsl:with-param name="text" select="string(key('dictionary', @dictref)/DICTIONARY_STRING/string)"/>
        </xsl:call-template>
      </span>
    </xsl:when>
    <xsl:when test="$anchor">
      <span class="problem" id="{generate-id()}" title="no text in the dictionaries">[<xsl:value-of select="@dictref"/>]</span>
    </xsl:when>
    <xsl:otherwise>
      <span class="problem" title="no text in the dictionaries">[<xsl:value-of select="@dictref"/>]</span>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- "|en|Menu|de|Menü" or "Menu|de|Menü": the part of `lang`, else the first part; a text
     that marks its languages but not `lang` is marked. -->
<xsl:template name="in-language">
  <xsl:param name="text"/>
  <xsl:variable name="marked">
    <xsl:call-template name="mark-length"><xsl:with-param name="text" select="$text"/></xsl:call-template>
  </xsl:variable>
  <xsl:variable name="wanted" select="concat('|', $lang, '|')"/>
  <xsl:choose>
    <xsl:when test="$lang != '' and contains($text, $wanted)">
      <xsl:call-template name="until-mark"><xsl:with-param name="text" select="substring-after($text, $wanted)"/></xsl:call-template>
    </xsl:when>
    <xsl:when test="$marked &gt; 0">
      <xsl:variable name="first">
        <xsl:call-template name="until-mark"><xsl:with-param name="text" select="substring($text, $marked + 1)"/></xsl:call-template>
      </xsl:variable>
      <xsl:choose>
        <xsl:when test="$lang != '' and $lang != substring($text, 2, $marked - 2)">
          <span class="other-language" title="no {$lang} text"><xsl:value-of select="$first"/></span>
        </xsl:when>
        <xsl:otherwise><xsl:value-of select="$first"/></xsl:otherwise>
      </xsl:choose>
    </xsl:when>
    <xsl:otherwise>
      <xsl:call-template name="until-mark"><xsl:with-param name="text" select="$text"/></xsl:call-template>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- The length of the mark that starts `text` ("|de|" gives 4), or 0: a '|', two to five
     letters ('_' and '-' allowed after the first two), and a '|'. -->
<xsl:template name="mark-length">
  <xsl:param name="text"/>
  <xsl:variable name="code" select="substring-before(substring($text, 2), '|')"/>
  <xsl:choose>
    <xsl:when test="starts-with($text, '|') and contains(substring($text, 2), '|')
                    and string-length($code) &gt;= 2 and string-length($code) &lt;= 5
                    and translate($code, concat($letters, '_-'), '') = ''
                    and translate(substring($code, 1, 2), $letters, '') = ''">
      <xsl:value-of select="string-length($code) + 2"/>
    </xsl:when>
    <xsl:otherwise>0</xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- `text` up to the next mark. -->
<xsl:template name="until-mark">
  <xsl:param name="text"/>
  <xsl:choose>
    <xsl:when test="not(contains($text, '|'))"><xsl:value-of select="$text"/></xsl:when>
    <xsl:otherwise>
      <xsl:variable name="rest" select="concat('|', substring-after($text, '|'))"/>
      <xsl:variable name="marked">
        <xsl:call-template name="mark-length"><xsl:with-param name="text" select="$rest"/></xsl:call-template>
      </xsl:variable>
      <xsl:value-of select="substring-before($text, '|')"/>
      <xsl:if test="$marked = 0">
        <xsl:text>|</xsl:text>
        <xsl:call-template name="until-mark"><xsl:with-param name="text" select="substring($rest, 2)"/></xsl:call-template>
      </xsl:if>
    </xsl:otherwise>
  </xsl:choose>
</xsl:template>

<!-- ==== Style ============================================================================= -->

<xsl:template name="style">
body { font: 14px/1.45 system-ui, sans-serif; margin: 0 auto; max-width: 72em; padding: 1em 2em; color: #1b1f24; background: #fff; }
h1 { font-size: 1.6em; margin: 0.2em 0; }
h2 { font-size: 1.25em; border-bottom: 2px solid #d0d7de; padding-bottom: 0.2em; margin-top: 1.6em; }
h3 { font-size: 1em; margin: 0 0 0.3em; }
a { color: #0550ae; text-decoration: none; }
a:hover { text-decoration: underline; }
code, pre { font: 0.92em ui-monospace, monospace; }
pre.code { background: #f6f8fa; padding: 0.5em; margin: 0.2em 0; white-space: pre-wrap; }
table { border-collapse: collapse; }
th { text-align: left; vertical-align: top; padding: 0.15em 1em 0.15em 0; font-weight: 600; color: #57606a; white-space: nowrap; }
td { vertical-align: top; padding: 0.15em 0; }
.contents { background: #f6f8fa; padding: 0.5em 0.8em; }
.problem { background: #ffebe9; color: #a40e26; border-bottom: 2px solid #cf222e; }
.problems li { margin: 0.15em 0; }
.where { color: #57606a; }
.other-language { border-bottom: 1px dotted #9a6700; }
.key { border-bottom: 1px dotted #8c959f; }
.kw { font: 0.85em ui-monospace, monospace; color: #6639ba; }
.kw + .kw::before { content: ", "; color: #57606a; }
.type { font: 0.8em ui-monospace, monospace; color: #fff; background: #57606a; padding: 0 0.35em; border-radius: 3px; margin-left: 0.3em; }
h3 .type { margin-left: 0; }
.id { font: 0.85em ui-monospace, monospace; color: #57606a; }
.label { font-weight: 600; }
.menu { margin: 0.2em 0; }
.menu-head { font-weight: 600; }
.menu-head .kw { margin-left: 0.5em; }
.menu ul { list-style: none; margin: 0.1em 0 0.3em 0.4em; padding-left: 1em; border-left: 2px solid #d0d7de; }
.menu li { margin: 0.15em 0; }
.menu li .kw { margin-left: 0.4em; }
li.break { color: #57606a; font-size: 0.85em; }
li.separator hr { border: 0; border-top: 1px solid #d0d7de; }
.item { border: 1px solid #d0d7de; border-radius: 4px; padding: 0.5em 0.8em; margin: 0.6em 0; }
.item:target { outline: 3px solid #54aeff; }
.condition { border-left: 3px solid #bf8700; padding-left: 0.5em; margin: 0.15em 0; }
.branch { margin-left: 1em; }
.entry { margin: 0.1em 0; }
.entry > .part + .part::before { content: " · "; color: #8c959f; }
.named .name { font: 0.85em ui-monospace, monospace; color: #57606a; }
.picture { max-width: 24em; image-rendering: pixelated; min-width: 32px; vertical-align: middle; margin: 0.2em 0.5em; border: 1px solid #d0d7de; }
</xsl:template>

</xsl:stylesheet>
