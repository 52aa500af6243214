<?xml version="1.0" encoding="UTF-8"?>
<!-- Merges a download into a store as DownloadXml does, and takes finished orders out.

     xsltproc -stringparam download DOWNLOAD -o MERGED merge.xsl STORE

     key() looks into the document of the current node. Where it is to look into another one, a
     for-each over that document's only root goes there. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
                xmlns:exsl="http://exslt.org/common" exclude-result-prefixes="exsl">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>
  <xsl:strip-space elements="*"/>
  <xsl:param name="download"/>

  <xsl:variable name="store" select="/*"/>
  <xsl:variable name="new" select="document($download)/*"/>

  <xsl:key name="order" match="ccsocservcordr/record" use="@ServiceOrder"/>
  <xsl:key name="activities" match="ccsocservcactv/ServiceOrder" use="@ID"/>
  <xsl:key name="activity" match="ccsocservcactv/ServiceOrder/*" use="concat(../@ID, '&#10;', @Activity)"/>
  <xsl:key name="lines"
           match="ccsocservcmatl/ServiceOrder | ccsocservclabr/ServiceOrder | ccsocservcothr/ServiceOrder"
           use="concat(name(..), '&#10;', @ID, '&#10;', @Activity)"/>
  <xsl:key name="line"
           match="ccsocservcmatl/ServiceOrder/* | ccsocservclabr/ServiceOrder/* | ccsocservcothr/ServiceOrder/*"
           use="concat(name(../..), '&#10;', ../@ID, '&#10;', ../@Activity, '&#10;', @LineNumber)"/>
  <xsl:key name="unsent" match="ccsocservcordr/record[@State = 'N' or @State = 'M']" use="@ServiceOrder"/>
  <xsl:key name="unsent" match="*/ServiceOrder/*[@State = 'N' or @State = 'M']" use="../@ID"/>
  <xsl:key name="fate" match="order" use="@number"/>

  <!-- What becomes of the orders of the store that do not simply stay as they are. -->
  <xsl:variable name="fate-tree">
    <fates>
      <xsl:for-each select="$store/ccsocservcordr/record">
        <xsl:variable name="record" select="."/>
        <xsl:for-each select="$new">
          <xsl:variable name="closing" select="key('order', $record/@ServiceOrder)[*[1] = '35']"/>
          <xsl:choose>
            <xsl:when test="$closing and ($record/*[1] != '35' or $record/*[22] != $closing/*[22] or
                                          $record/*[23] != $closing/*[23])">
              <order number="{$record/@ServiceOrder}" is="closed"/>
            </xsl:when>
            <xsl:when test="$record/*[1] = '15'"/>
            <xsl:when test="$record/*[1] = '35'">
              <order number="{$record/@ServiceOrder}" is="finished"/>
            </xsl:when>
            <xsl:otherwise>
              <xsl:apply-templates select="$record" mode="completed"/>
            </xsl:otherwise>
          </xsl:choose>
        </xsl:for-each>
      </xsl:for-each>
    </fates>
  </xsl:variable>
  <xsl:variable name="fates" select="exsl:node-set($fate-tree)/*"/>

  <xsl:template match="record" mode="completed">
    <xsl:variable name="record" select="."/>
    <xsl:if test="not(key('unsent', @ServiceOrder))">
      <order number="{@ServiceOrder}" is="finished"/>
    </xsl:if>
    <xsl:if test="*[1] = '20'">
      <xsl:for-each select="$new">
        <xsl:apply-templates select="key('activities', $record/@ServiceOrder)/*" mode="reopening"/>
      </xsl:for-each>
    </xsl:if>
  </xsl:template>

  <xsl:template match="*" mode="reopening">
    <xsl:variable name="activity" select="."/>
    <xsl:for-each select="$store">
      <xsl:if test="not(key('activity', concat($activity/../@ID, '&#10;', $activity/@Activity)))">
        <order number="{$activity/../@ID}" is="reopened"/>
      </xsl:if>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="harbrook">
    <xsl:copy>
      <xsl:apply-templates select="*"/>
    </xsl:copy>
  </xsl:template>

  <xsl:template match="*">
    <xsl:copy-of select="."/>
  </xsl:template>

  <xsl:template match="ccsocservcordr | ccsocservcactv | ccsocservcmatl | ccsocservclabr | ccsocservcothr">
    <xsl:copy>
      <xsl:apply-templates select="*"/>
      <xsl:apply-templates select="$new/*[name() = name(current())]/*" mode="new"/>
    </xsl:copy>
  </xsl:template>

  <!-- Orders of the store. -->
  <xsl:template match="ccsocservcordr/record">
    <xsl:variable name="record" select="."/>
    <xsl:for-each select="$fates">
      <xsl:variable name="fate" select="key('fate', $record/@ServiceOrder)"/>
      <xsl:choose>
        <xsl:when test="not($fate)">
          <xsl:copy-of select="$record"/>
        </xsl:when>
        <xsl:when test="$fate/@is = 'closed'">
          <xsl:apply-templates select="$record" mode="closed"/>
        </xsl:when>
        <xsl:when test="$fate/@is = 'reopened'">
          <xsl:apply-templates select="$record" mode="reopened"/>
        </xsl:when>
      </xsl:choose>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="record" mode="closed">
    <xsl:variable name="record" select="."/>
    <xsl:copy>
      <xsl:copy-of select="@*"/>
      <xsl:for-each select="$new">
        <xsl:variable name="closing" select="key('order', $record/@ServiceOrder)[*[1] = '35'][last()]"/>
        <xsl:for-each select="$record/*">
          <xsl:choose>
            <xsl:when test="position() = 1 or position() = 22 or position() = 23">
              <xsl:variable name="position" select="position()"/>
              <xsl:copy>
                <xsl:copy-of select="@*"/>
                <xsl:value-of select="$closing/*[$position]"/>
              </xsl:copy>
            </xsl:when>
            <xsl:otherwise>
              <xsl:copy-of select="."/>
            </xsl:otherwise>
          </xsl:choose>
        </xsl:for-each>
      </xsl:for-each>
    </xsl:copy>
  </xsl:template>

  <xsl:template match="record" mode="reopened">
    <xsl:copy>
      <xsl:copy-of select="@*"/>
      <xsl:for-each select="*[1]">
        <xsl:copy>
          <xsl:copy-of select="@*"/>
          <xsl:text>15</xsl:text>
        </xsl:copy>
      </xsl:for-each>
      <xsl:copy-of select="*[position() > 1]"/>
    </xsl:copy>
  </xsl:template>

  <!-- Groups of the store, apart from those of finished orders. -->
  <xsl:template match="harbrook/*/ServiceOrder">
    <xsl:variable name="group" select="."/>
    <xsl:for-each select="$fates">
      <xsl:variable name="fate" select="key('fate', $group/@ID)/@is"/>
      <xsl:if test="not($fate) or $fate != 'finished'">
        <xsl:apply-templates select="$group" mode="kept"/>
      </xsl:if>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="ccsocservcactv/ServiceOrder" mode="kept">
    <xsl:variable name="group" select="."/>
    <xsl:copy>
      <xsl:copy-of select="@* | *"/>
      <xsl:if test="key('order', @ID)">
        <xsl:for-each select="$new">
          <xsl:for-each select="key('activities', $group/@ID)/*">
            <xsl:variable name="activity" select="."/>
            <xsl:for-each select="$store">
              <xsl:if test="not(key('activity', concat($group/@ID, '&#10;', $activity/@Activity)))">
                <xsl:copy-of select="$activity"/>
              </xsl:if>
            </xsl:for-each>
          </xsl:for-each>
        </xsl:for-each>
      </xsl:if>
    </xsl:copy>
  </xsl:template>

  <xsl:template match="ServiceOrder" mode="kept">
    <xsl:variable name="group" select="."/>
    <xsl:variable name="key" select="concat(name(..), '&#10;', @ID, '&#10;', @Activity)"/>
    <xsl:for-each select="$new">
      <xsl:variable name="downloaded" select="key('lines', $key)"/>
      <xsl:choose>
        <xsl:when test="not($downloaded)">
          <xsl:copy-of select="$group"/>
        </xsl:when>
        <xsl:otherwise>
          <xsl:for-each select="$group">
            <xsl:copy>
              <xsl:copy-of select="@*"/>
              <xsl:apply-templates select="*" mode="line"/>
              <xsl:for-each select="$downloaded/*">
                <xsl:variable name="line" select="."/>
                <xsl:for-each select="$store">
                  <xsl:if test="not(key('line', concat($key, '&#10;', $line/@LineNumber)))">
                    <xsl:copy-of select="$line"/>
                  </xsl:if>
                </xsl:for-each>
              </xsl:for-each>
            </xsl:copy>
          </xsl:for-each>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:for-each>
  </xsl:template>

  <!-- A line with the texts that the server has for it. -->
  <xsl:template match="*" mode="line">
    <xsl:variable name="line" select="."/>
    <xsl:variable name="key"
                  select="concat(name(../..), '&#10;', ../@ID, '&#10;', ../@Activity, '&#10;', @LineNumber)"/>
    <xsl:copy>
      <xsl:copy-of select="@*"/>
      <xsl:for-each select="$new">
        <xsl:variable name="downloaded" select="key('line', $key)/*"/>
        <xsl:for-each select="$line/*">
          <xsl:variable name="text" select="$downloaded[name() = name(current())]"/>
          <xsl:choose>
            <xsl:when test="$text">
              <xsl:copy>
                <xsl:copy-of select="@*"/>
                <xsl:value-of select="$text[last()]"/>
              </xsl:copy>
            </xsl:when>
            <xsl:otherwise>
              <xsl:copy-of select="."/>
            </xsl:otherwise>
          </xsl:choose>
        </xsl:for-each>
      </xsl:for-each>
    </xsl:copy>
  </xsl:template>

  <!-- What the store lacks: open orders, and groups of orders that it has or gets. -->
  <xsl:template match="record" mode="new">
    <xsl:variable name="record" select="."/>
    <xsl:if test="*[1] = '15'">
      <xsl:for-each select="$store">
        <xsl:if test="not(key('order', $record/@ServiceOrder))">
          <xsl:copy-of select="$record"/>
        </xsl:if>
      </xsl:for-each>
    </xsl:if>
  </xsl:template>

  <xsl:template match="ServiceOrder" mode="new">
    <xsl:variable name="group" select="."/>
    <xsl:variable name="isNewOrder" select="key('order', @ID)/*[1] = '15'"/>
    <xsl:variable name="isActivities" select="name(..) = 'ccsocservcactv'"/>
    <xsl:variable name="key" select="concat(name(..), '&#10;', @ID, '&#10;', @Activity)"/>
    <xsl:for-each select="$store">
      <xsl:if test="($isNewOrder or key('order', $group/@ID)) and
                    not($isActivities and key('activities', $group/@ID)) and not(key('lines', $key))">
        <xsl:for-each select="$fates">
          <xsl:variable name="fate" select="key('fate', $group/@ID)/@is"/>
          <xsl:if test="not($fate) or $fate != 'finished'">
            <xsl:copy-of select="$group"/>
          </xsl:if>
        </xsl:for-each>
      </xsl:if>
    </xsl:for-each>
  </xsl:template>
</xsl:stylesheet>
